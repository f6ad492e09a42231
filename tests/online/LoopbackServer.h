// A small HTTP server on 127.0.0.1 for the download tests: each path answers
// with a fixed status and body, optionally after a delay or gzip-compressed
// when the client accepts it. One connection at a time; every wait is bounded
// so that the server stops by itself when the test ends.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <zlib.h>

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace orv::test {

struct Route {
  int Status = 200;
  std::string Body;
  int DelayMs = 0;
  bool Gzip = false;
  std::string Location;   // for a redirect
};

inline std::string GzipBytes(const std::string& in) {
  z_stream z{};
  deflateInit2(&z, Z_BEST_SPEED, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&z, in.size()) + 32, '\0');
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.data()));
  z.avail_in = static_cast<uInt>(in.size());
  z.next_out = reinterpret_cast<Bytef*>(out.data());
  z.avail_out = static_cast<uInt>(out.size());
  deflate(&z, Z_FINISH);
  out.resize(z.total_out);
  deflateEnd(&z);
  return out;
}

class LoopbackServer {
public:
  LoopbackServer() {
    fd_ = socket(AF_INET, SOCK_STREAM, 0);
    int one = 1;
    setsockopt(fd_, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    a.sin_port = 0;
    bind(fd_, reinterpret_cast<sockaddr*>(&a), sizeof a);
    listen(fd_, 8);
    socklen_t len = sizeof a;
    getsockname(fd_, reinterpret_cast<sockaddr*>(&a), &len);
    port_ = ntohs(a.sin_port);
    thread_ = std::thread([this] { Loop(); });
  }
  ~LoopbackServer() {
    stop_ = true;
    thread_.join();
    close(fd_);
  }

  std::string Url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port_) + path; }
  void Set(const std::string& path, Route r) {
    std::lock_guard<std::mutex> l(mutex_);
    routes_[path] = std::move(r);
  }
  int Hits(const std::string& path) {
    std::lock_guard<std::mutex> l(mutex_);
    return hits_[path];
  }
  bool LastAcceptedGzip() const { return acceptedGzip_; }

private:
  void Loop() {
    while (!stop_) {
      pollfd p{fd_, POLLIN, 0};
      if (poll(&p, 1, 50) <= 0) continue;
      int c = accept(fd_, nullptr, nullptr);
      if (c < 0) continue;
      Serve(c);
      close(c);
    }
  }

  void Serve(int c) {
    std::string req;
    char buf[4096];
    auto until = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (req.find("\r\n\r\n") == std::string::npos && std::chrono::steady_clock::now() < until) {
      pollfd p{c, POLLIN, 0};
      if (poll(&p, 1, 50) <= 0) continue;
      ssize_t n = recv(c, buf, sizeof buf, 0);
      if (n <= 0) return;
      req.append(buf, static_cast<size_t>(n));
    }
    size_t sp1 = req.find(' '), sp2 = req.find(' ', sp1 + 1);
    if (sp1 == std::string::npos || sp2 == std::string::npos) return;
    std::string path = req.substr(sp1 + 1, sp2 - sp1 - 1);
    bool gzipOk = req.find("gzip") != std::string::npos;
    acceptedGzip_ = gzipOk;
    Route r;
    bool found;
    {
      std::lock_guard<std::mutex> l(mutex_);
      ++hits_[path];
      auto it = routes_.find(path);
      found = it != routes_.end();
      if (found) r = it->second;
    }
    if (!found) r = Route{404, "<html>Not found</html>", 0, false, ""};
    for (int waited = 0; waited < r.DelayMs && !stop_; waited += 20)
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::string body = r.Gzip && gzipOk ? GzipBytes(r.Body) : r.Body;
    std::string head = "HTTP/1.1 " + std::to_string(r.Status) + " X\r\nContent-Length: " + std::to_string(body.size()) +
                       "\r\nConnection: close\r\n";
    if (r.Gzip && gzipOk) head += "Content-Encoding: gzip\r\n";
    if (!r.Location.empty()) head += "Location: " + r.Location + "\r\n";
    std::string all = head + "\r\n" + body;
    size_t sent = 0;
    while (sent < all.size() && !stop_) {
      ssize_t n = send(c, all.data() + sent, all.size() - sent, MSG_NOSIGNAL);
      if (n <= 0) return;
      sent += static_cast<size_t>(n);
    }
  }

  int fd_ = -1;
  int port_ = 0;
  std::atomic<bool> stop_{false};
  std::atomic<bool> acceptedGzip_{false};
  std::thread thread_;
  std::mutex mutex_;
  std::map<std::string, Route> routes_;
  std::map<std::string, int> hits_;
};

}  // namespace orv::test
