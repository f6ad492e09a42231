#include "simlink/NetSocket.h"

#include <cerrno>
#include <cstring>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace orv {

namespace {

#ifdef _WIN32
using SockLen = int;
constexpr int kWouldBlock = WSAEWOULDBLOCK;
constexpr int kInProgress = WSAEWOULDBLOCK;
int PollFd(std::intptr_t fd, short events, int ms) {
  WSAPOLLFD p{};
  p.fd = static_cast<SOCKET>(fd);
  p.events = events;
  const int n = WSAPoll(&p, 1, ms);
  if (n > 0 && (p.revents & (POLLERR | POLLHUP | POLLNVAL)) && !(p.revents & events)) return -2;
  return n;
}
void SetNonBlocking(std::intptr_t fd) {
  u_long on = 1;
  ioctlsocket(static_cast<SOCKET>(fd), FIONBIO, &on);
}
void CloseFd(std::intptr_t fd) { closesocket(static_cast<SOCKET>(fd)); }
#else
using SockLen = socklen_t;
constexpr int kWouldBlock = EWOULDBLOCK;
constexpr int kInProgress = EINPROGRESS;
int PollFd(std::intptr_t fd, short events, int ms) {
  pollfd p{};
  p.fd = static_cast<int>(fd);
  p.events = events;
  int n;
  do {
    n = poll(&p, 1, ms);
  } while (n < 0 && errno == EINTR);
  if (n > 0 && (p.revents & (POLLERR | POLLNVAL)) && !(p.revents & events)) return -2;
  return n;
}
void SetNonBlocking(std::intptr_t fd) {
  const int flags = fcntl(static_cast<int>(fd), F_GETFL, 0);
  fcntl(static_cast<int>(fd), F_SETFL, flags | O_NONBLOCK);
}
void CloseFd(std::intptr_t fd) { close(static_cast<int>(fd)); }
#endif

int MsLeft(NetDeadline deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - NetClock::now()).count();
  return left <= 0 ? 0 : static_cast<int>(left);
}

// IPv4 address of a numeric address or a host name; false when unknown.
bool Resolve(std::string_view host, std::uint16_t port, sockaddr_in& out) {
  std::memset(&out, 0, sizeof out);
  out.sin_family = AF_INET;
  out.sin_port = htons(port);
  const std::string h(host.empty() ? "127.0.0.1" : host);
  if (inet_pton(AF_INET, h.c_str(), &out.sin_addr) == 1) return true;
  addrinfo hints{};
  hints.ai_family = AF_INET;
  addrinfo* found = nullptr;
  if (getaddrinfo(h.c_str(), nullptr, &hints, &found) != 0 || !found) return false;
  out.sin_addr = reinterpret_cast<sockaddr_in*>(found->ai_addr)->sin_addr;
  freeaddrinfo(found);
  return true;
}

std::intptr_t NewSocket(int type) {
  NetStartup();
#ifdef _WIN32
  SOCKET s = socket(AF_INET, type, 0);
  return s == INVALID_SOCKET ? -1 : static_cast<std::intptr_t>(s);
#else
  return socket(AF_INET, type | SOCK_CLOEXEC, 0);
#endif
}

}  // namespace

NetSocket& NetSocket::operator=(NetSocket&& other) noexcept {
  if (this != &other) {
    Close();
    fd_ = other.fd_;
    other.fd_ = -1;
  }
  return *this;
}

void NetSocket::Close() {
  if (fd_ != -1) CloseFd(fd_);
  fd_ = -1;
}

void NetStartup() {
#ifdef _WIN32
  static const bool started = [] {
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }();
  (void)started;
#endif
}

int NetLastError() {
#ifdef _WIN32
  return WSAGetLastError();
#else
  return errno;
#endif
}

std::string NetErrorText(int error) {
  if (error == 0) return "timed out";
#ifdef _WIN32
  return "socket error " + std::to_string(error);
#else
  return std::strerror(error);
#endif
}

bool NetIsRefused(int error) {
#ifdef _WIN32
  return error == WSAECONNREFUSED;
#else
  return error == ECONNREFUSED;
#endif
}

NetSocket TcpConnect(std::string_view host, std::uint16_t port, NetDeadline deadline, int& error) {
  error = 0;
  sockaddr_in addr;
  if (!Resolve(host, port, addr)) {
#ifdef _WIN32
    error = WSAHOST_NOT_FOUND;
#else
    error = EHOSTUNREACH;
#endif
    return {};
  }
  NetSocket s(NewSocket(SOCK_STREAM));
  if (!s.Valid()) {
    error = NetLastError();
    return {};
  }
  SetNonBlocking(s.Fd());
  int one = 1;
  setsockopt(s.Fd(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&one), sizeof one);
  if (connect(s.Fd(), reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0) {
    const int e = NetLastError();
    if (e != kInProgress && e != kWouldBlock) {
      error = e;
      return {};
    }
    const int ready = PollFd(s.Fd(), POLLOUT, MsLeft(deadline));
    if (ready == 0) return {};  // time-out: error stays 0
    int soError = 0;
    SockLen len = sizeof soError;
    getsockopt(s.Fd(), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&soError), &len);
    if (ready < 0 || soError != 0) {
      error = soError ? soError : NetLastError();
      return {};
    }
  }
  return s;
}

// A socket of the type bound to addrText:port. A stream socket takes the
// port for itself alone; a failure names the address, and a busy port says so.
static NetSocket BoundSocket(int type, std::string_view addrText, std::uint16_t port, std::string& error) {
  sockaddr_in addr;
  const std::string where = std::string(addrText) + ":" + std::to_string(port);
  if (!Resolve(addrText, port, addr)) {
    error = "unknown address " + std::string(addrText);
    return {};
  }
  NetSocket s(NewSocket(type));
  if (!s.Valid()) {
    error = "no socket: " + NetErrorText(NetLastError());
    return {};
  }
  const bool udp = type == SOCK_DGRAM;
  if (!udp) {
#ifdef _WIN32
    // Windows lets a second program share the port with SO_REUSEADDR; exclusive
    // use makes a busy port an error, as it is elsewhere.
    int exclusive = 1;
    setsockopt(s.Fd(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&exclusive), sizeof exclusive);
#else
    int reuse = 1;
    setsockopt(s.Fd(), SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
#endif
  }
  if (bind(s.Fd(), reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0) {
    const int e = NetLastError();
#ifdef _WIN32
    const bool busy = e == WSAEADDRINUSE || e == WSAEACCES;
#else
    const bool busy = e == EADDRINUSE;
#endif
    error = busy ? (udp ? "UDP port " : "port ") + where + " is already in use"
                 : (udp ? "cannot bind UDP " : "cannot listen on ") + where + ": " + NetErrorText(e);
    return {};
  }
  return s;
}

NetSocket TcpListen(std::string_view addrText, std::uint16_t port, std::string& error) {
  NetSocket s = BoundSocket(SOCK_STREAM, addrText, port, error);
  if (!s.Valid()) return {};
  const std::string where = std::string(addrText) + ":" + std::to_string(port);
  if (listen(s.Fd(), 4) != 0) {
    error = "cannot listen on " + where + ": " + NetErrorText(NetLastError());
    return {};
  }
  SetNonBlocking(s.Fd());
  return s;
}

NetSocket TcpAccept(NetSocket& listener, NetDeadline deadline) {
  if (!listener.Valid() || PollFd(listener.Fd(), POLLIN, MsLeft(deadline)) <= 0) return {};
#ifdef _WIN32
  SOCKET c = accept(static_cast<SOCKET>(listener.Fd()), nullptr, nullptr);
  if (c == INVALID_SOCKET) return {};
  NetSocket s(static_cast<std::intptr_t>(c));
#else
  NetSocket s(accept(static_cast<int>(listener.Fd()), nullptr, nullptr));
  if (!s.Valid()) return {};
#endif
  SetNonBlocking(s.Fd());
  int one = 1;
  setsockopt(s.Fd(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&one), sizeof one);
  return s;
}

NetIo SendAll(NetSocket& s, const void* data, std::size_t size, NetDeadline deadline) {
  const char* p = static_cast<const char*>(data);
  while (size > 0) {
    if (!s.Valid()) return NetIo::Failed;
#ifdef _WIN32
    const int n = send(static_cast<SOCKET>(s.Fd()), p, static_cast<int>(size), 0);
#else
    const ssize_t n = send(static_cast<int>(s.Fd()), p, size, MSG_NOSIGNAL);
#endif
    if (n > 0) {
      p += n;
      size -= static_cast<std::size_t>(n);
      continue;
    }
    const int e = NetLastError();
    if (n < 0 && (e == kWouldBlock || e == EAGAIN || e == EINTR)) {
      const int ready = PollFd(s.Fd(), POLLOUT, MsLeft(deadline));
      if (ready == 0) return NetIo::TimedOut;
      if (ready < 0) return NetIo::Failed;
      continue;
    }
    return NetIo::Failed;
  }
  return NetIo::Ok;
}

NetIo RecvAll(NetSocket& s, void* data, std::size_t size, NetDeadline deadline) {
  char* p = static_cast<char*>(data);
  // The bytes are usually there already: try first, wait only when there are
  // none (a wait is costly under Wine, where it goes through its server).
  bool wait = false;
  while (size > 0) {
    if (!s.Valid()) return NetIo::Failed;
    if (wait) {
      const int ready = PollFd(s.Fd(), POLLIN, MsLeft(deadline));
      if (ready == 0) return NetIo::TimedOut;
      if (ready < 0) return NetIo::Failed;
    }
    wait = true;
#ifdef _WIN32
    const int n = recv(static_cast<SOCKET>(s.Fd()), p, static_cast<int>(size), 0);
#else
    const ssize_t n = recv(static_cast<int>(s.Fd()), p, size, 0);
#endif
    if (n == 0) return NetIo::Closed;
    if (n < 0) {
      const int e = NetLastError();
      if (e == kWouldBlock || e == EAGAIN || e == EINTR) continue;
      return NetIo::Failed;
    }
    p += n;
    size -= static_cast<std::size_t>(n);
    wait = false;
  }
  return NetIo::Ok;
}

NetIo RecvSome(NetSocket& s, void* data, std::size_t size, NetDeadline deadline, std::size_t& got) {
  got = 0;
  for (;;) {
    if (!s.Valid()) return NetIo::Failed;
    const int ready = PollFd(s.Fd(), POLLIN, MsLeft(deadline));
    if (ready == 0) return NetIo::TimedOut;
    if (ready < 0) return NetIo::Failed;
#ifdef _WIN32
    const int n = recv(static_cast<SOCKET>(s.Fd()), static_cast<char*>(data), static_cast<int>(size), 0);
#else
    const ssize_t n = recv(static_cast<int>(s.Fd()), data, size, 0);
#endif
    if (n == 0) return NetIo::Closed;
    if (n < 0) {
      const int e = NetLastError();
      if (e == kWouldBlock || e == EAGAIN || e == EINTR) continue;
      return NetIo::Failed;
    }
    got = static_cast<std::size_t>(n);
    return NetIo::Ok;
  }
}

NetSocket UdpBind(std::string_view addrText, std::uint16_t port, std::string& error) {
  NetSocket s = BoundSocket(SOCK_DGRAM, addrText, port, error);
  if (!s.Valid()) return {};
  SetNonBlocking(s.Fd());
  return s;
}

std::uint16_t LocalPort(const NetSocket& s) {
  sockaddr_in addr{};
  SockLen len = sizeof addr;
  if (!s.Valid() || getsockname(s.Fd(), reinterpret_cast<sockaddr*>(&addr), &len) != 0) return 0;
  return ntohs(addr.sin_port);
}

long UdpRecvFrom(NetSocket& s, void* buffer, std::size_t size, std::uint32_t waitMs, std::uint32_t* fromAddr,
                 std::uint16_t* fromPort) {
  if (!s.Valid()) return -1;
  if (waitMs > 0) {
    const int ready = PollFd(s.Fd(), POLLIN, static_cast<int>(waitMs));
    if (ready == 0) return 0;
    if (ready < 0) return -1;
  }
  sockaddr_in from{};
  SockLen len = sizeof from;
#ifdef _WIN32
  const int n = recvfrom(static_cast<SOCKET>(s.Fd()), static_cast<char*>(buffer), static_cast<int>(size), 0,
                         reinterpret_cast<sockaddr*>(&from), &len);
  // A datagram longer than the buffer is an error on Windows; it counts as
  // truncated, as elsewhere.
  if (n < 0 && WSAGetLastError() == WSAEMSGSIZE) return static_cast<long>(size);
#else
  const ssize_t n = recvfrom(static_cast<int>(s.Fd()), buffer, size, 0, reinterpret_cast<sockaddr*>(&from), &len);
#endif
  if (n < 0) {
    const int e = NetLastError();
    return (e == kWouldBlock || e == EAGAIN || e == EINTR) ? 0 : -1;
  }
  if (fromAddr) *fromAddr = ntohl(from.sin_addr.s_addr);
  if (fromPort) *fromPort = ntohs(from.sin_port);
  // An empty datagram carries nothing; it reads as none.
  return static_cast<long>(n);
}

bool UdpSendTo(NetSocket& s, std::string_view host, std::uint16_t port, const void* data, std::size_t size) {
  sockaddr_in addr;
  if (!s.Valid() || !Resolve(host, port, addr)) return false;
#ifdef _WIN32
  const int n = sendto(static_cast<SOCKET>(s.Fd()), static_cast<const char*>(data), static_cast<int>(size), 0,
                       reinterpret_cast<sockaddr*>(&addr), sizeof addr);
#else
  const ssize_t n = sendto(static_cast<int>(s.Fd()), data, size, 0, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
#endif
  return n == static_cast<long>(size);
}

std::uint16_t ParsePort(std::string_view text) {
  if (text.empty() || text.size() > 5) return 0;
  unsigned value = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return 0;
    value = value * 10 + static_cast<unsigned>(c - '0');
  }
  return value >= 1 && value <= 65535 ? static_cast<std::uint16_t>(value) : 0;
}

}  // namespace orv
