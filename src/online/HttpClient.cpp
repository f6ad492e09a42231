#include "online/HttpClient.h"

#include <chrono>

#include <zlib.h>

#ifdef ORV_HAVE_CURL
#include <curl/curl.h>
#endif

namespace orv {

void QueueUiThread::Post(std::function<void()> task) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  cv_.notify_all();
}

int QueueUiThread::Pump() {
  std::deque<std::function<void()>> now;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    now.swap(tasks_);
  }
  for (auto& t : now) t();
  return static_cast<int>(now.size());
}

int QueueUiThread::WaitAndPump(int timeoutMs) {
  {
    std::unique_lock<std::mutex> lock(mutex_);
    cv_.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return !tasks_.empty(); });
  }
  return Pump();
}

bool GunzipIfPacked(std::string& body, int64_t maxBody) {
  if (body.size() < 2 || static_cast<uint8_t>(body[0]) != 0x1F || static_cast<uint8_t>(body[1]) != 0x8B) return true;
  z_stream z{};
  if (inflateInit2(&z, 15 + 32) != Z_OK) return false;
  std::string out;
  char buf[65536];
  z.next_in = reinterpret_cast<Bytef*>(body.data());
  z.avail_in = static_cast<uInt>(body.size());
  int rc = Z_OK;
  while (rc == Z_OK) {
    z.next_out = reinterpret_cast<Bytef*>(buf);
    z.avail_out = sizeof buf;
    rc = inflate(&z, Z_NO_FLUSH);
    if (rc != Z_OK && rc != Z_STREAM_END) break;
    out.append(buf, sizeof buf - z.avail_out);
    if (static_cast<int64_t>(out.size()) > maxBody) {
      rc = Z_MEM_ERROR;
      break;
    }
    if (rc == Z_OK && z.avail_in == 0 && z.avail_out != 0) break;   // truncated
  }
  inflateEnd(&z);
  if (rc != Z_STREAM_END) return false;
  body = std::move(out);
  return true;
}

#ifdef ORV_HAVE_CURL

namespace {

struct Transfer {
  std::string* body;
  int64_t maxBody;
  bool tooLarge = false;
  const HttpProgress* progress;
};

size_t OnData(char* data, size_t size, size_t count, void* user) {
  auto* t = static_cast<Transfer*>(user);
  size_t n = size * count;
  if (static_cast<int64_t>(t->body->size() + n) > t->maxBody) {
    t->tooLarge = true;
    return 0;   // ends the transfer
  }
  t->body->append(data, n);
  return n;
}

int OnProgress(void* user, curl_off_t total, curl_off_t done, curl_off_t, curl_off_t) {
  auto* t = static_cast<Transfer*>(user);
  if (total > t->maxBody) {
    t->tooLarge = true;
    return 1;
  }
  if (t->progress && *t->progress) (*t->progress)(done, total);
  return 0;
}

class CurlHttpClient : public HttpClient {
public:
  CurlHttpClient() { curl_global_init(CURL_GLOBAL_DEFAULT); }
  ~CurlHttpClient() override { curl_global_cleanup(); }

  HttpResult Get(const std::string& url, int timeoutMs, const HttpProgress& progress, int64_t maxBody) override {
    HttpResult result;
    CURL* curl = curl_easy_init();
    if (!curl) {
      result.Error = "no transfer handle";
      return result;
    }
    Transfer t{&result.Body, maxBody, false, &progress};
    char errorText[CURL_ERROR_SIZE] = {};
    // Every fetch goes to the server: no cache of ours, and none on the way.
    curl_slist* headers = curl_slist_append(nullptr, "Cache-Control: no-cache");
    headers = curl_slist_append(headers, "Pragma: no-cache");
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, 5L);
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, "");   // every encoding curl can unpack
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(timeoutMs));
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(timeoutMs));
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "Orvanta");
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, OnData);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &t);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, OnProgress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &t);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errorText);
    CURLcode rc = curl_easy_perform(curl);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &result.Status);
    curl_slist_free_all(headers);
    curl_easy_cleanup(curl);
    if (t.tooLarge) {
      result.Body.clear();
      result.Error = "the answer is too large";
      return result;
    }
    if (rc != CURLE_OK) {
      result.Body.clear();
      result.Error = errorText[0] ? errorText : curl_easy_strerror(rc);
      return result;
    }
    if (result.Status < 200 || result.Status > 299) {
      result.Body.clear();
      result.Error = "HTTP status " + std::to_string(result.Status);
      return result;
    }
    // A file served packed (a ".gz" download rather than a packed answer).
    if (!GunzipIfPacked(result.Body, maxBody)) {
      result.Body.clear();
      result.Error = "the packed answer is damaged or too large";
      return result;
    }
    result.Ok = true;
    return result;
  }
};

}  // namespace

std::unique_ptr<HttpClient> MakeCurlHttpClient() { return std::make_unique<CurlHttpClient>(); }

#else

std::unique_ptr<HttpClient> MakeCurlHttpClient() { return nullptr; }

#endif

}  // namespace orv
