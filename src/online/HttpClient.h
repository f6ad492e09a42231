// The program's one seam to the web: a URL fetched to bytes with a time-out
// and a progress report, and the hand-over of a finished transfer to the
// interface thread. libcurl in the program; tests talk to a server of their
// own on the loopback address.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace orv {

struct HttpResult {
  bool Ok = false;          // a 2xx answer arrived in full
  long Status = 0;          // the HTTP status, 0 when none came
  std::string Body;         // decoded (gzip and deflate answers are unpacked)
  std::string Error;        // why not, for a failed transfer
};

// Bytes received so far and the expected total (0 when unknown). Called on
// the transfer's thread.
using HttpProgress = std::function<void(int64_t done, int64_t total)>;

// No real feed comes near this; a larger answer is refused.
inline constexpr int64_t kMaxHttpBody = 64LL * 1024 * 1024;

class HttpClient {
public:
  virtual ~HttpClient() = default;
  // Blocks the calling thread until the answer is complete, the time-out has
  // run out or the body passes maxBody. The answer is never taken from a
  // cache. Safe to call from any one thread at a time.
  virtual HttpResult Get(const std::string& url, int timeoutMs, const HttpProgress& progress,
                         int64_t maxBody = kMaxHttpBody) = 0;
};

// Unpacks a body that is a gzip file (first bytes 1F 8B) in place; other
// bodies are left alone. False when it is damaged or unpacks beyond maxBody.
bool GunzipIfPacked(std::string& body, int64_t maxBody = kMaxHttpBody);

// The libcurl client; nullptr when the program was built without libcurl.
std::unique_ptr<HttpClient> MakeCurlHttpClient();

// Where a transfer's result goes back to the interface thread. The Qt shell
// posts to its event loop; tests and the CLI pump a queue.
class UiThread {
public:
  virtual ~UiThread() = default;
  // Runs task on the interface thread, later. Callable from any thread.
  virtual void Post(std::function<void()> task) = 0;
};

// A UiThread for tests and the command line: tasks wait in a queue until the
// owner pumps it.
class QueueUiThread : public UiThread {
public:
  void Post(std::function<void()> task) override;
  // Runs every task queued now; returns how many ran.
  int Pump();
  // Waits up to timeoutMs for a task, then pumps. Returns how many ran.
  int WaitAndPump(int timeoutMs);

private:
  std::mutex mutex_;
  std::condition_variable cv_;
  std::deque<std::function<void()>> tasks_;
};

}  // namespace orv
