// Small TCP and UDP sockets over BSD sockets and Winsock, for the bridge to a
// Windows machine and the adapters of FlightGear and X-Plane. Every wait has a
// time-out; nothing here blocks without one.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv {

// A socket that closes itself. Invalid when default-built or after a failure.
class NetSocket {
 public:
  NetSocket() = default;
  explicit NetSocket(std::intptr_t fd) : fd_(fd) {}
  ~NetSocket() { Close(); }
  NetSocket(NetSocket&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
  NetSocket& operator=(NetSocket&& other) noexcept;
  NetSocket(const NetSocket&) = delete;
  NetSocket& operator=(const NetSocket&) = delete;

  bool Valid() const { return fd_ != -1; }
  std::intptr_t Fd() const { return fd_; }
  void Close();

 private:
  std::intptr_t fd_ = -1;
};

using NetClock = std::chrono::steady_clock;
using NetDeadline = NetClock::time_point;

inline NetDeadline DeadlineIn(std::uint32_t ms) { return NetClock::now() + std::chrono::milliseconds(ms); }

// Winsock wants WSAStartup once per process; elsewhere a no-op. Called by
// every opening function below, so callers need not.
void NetStartup();

// The last socket error (errno or WSAGetLastError) and its words.
int NetLastError();
std::string NetErrorText(int error);
// The error a refused connection gives on this platform.
bool NetIsRefused(int error);

// Connects to HOST:PORT (a numeric address or a name) within the deadline.
// On failure the socket is invalid and error holds the socket error (0 for a
// time-out).
NetSocket TcpConnect(std::string_view host, std::uint16_t port, NetDeadline deadline, int& error);
// Listens on ADDR:PORT; on failure an invalid socket and the reason in words
// ("port 9020 on 127.0.0.1 is already in use", ...).
NetSocket TcpListen(std::string_view addr, std::uint16_t port, std::string& error);
// Waits for a client until the deadline; invalid when none came.
NetSocket TcpAccept(NetSocket& listener, NetDeadline deadline);

enum class NetIo { Ok, Closed, TimedOut, Failed };
// Sends or receives exactly size bytes before the deadline.
NetIo SendAll(NetSocket& s, const void* data, std::size_t size, NetDeadline deadline);
NetIo RecvAll(NetSocket& s, void* data, std::size_t size, NetDeadline deadline);
// Receives what is there (at most size bytes, at least one) before the
// deadline; got holds the count when Ok.
NetIo RecvSome(NetSocket& s, void* data, std::size_t size, NetDeadline deadline, std::size_t& got);

// UDP: a socket bound to ADDR:PORT (port 0: any free port), datagrams in and
// out. RecvFrom gives the datagram's length, 0 when none came before the
// deadline (waitMs 0: do not wait), -1 on an error.
NetSocket UdpBind(std::string_view addr, std::uint16_t port, std::string& error);
std::uint16_t LocalPort(const NetSocket& s);
long UdpRecvFrom(NetSocket& s, void* buffer, std::size_t size, std::uint32_t waitMs,
                 std::uint32_t* fromAddr = nullptr, std::uint16_t* fromPort = nullptr);
bool UdpSendTo(NetSocket& s, std::string_view host, std::uint16_t port, const void* data, std::size_t size);

// Parses "1..65535"; 0 for anything else.
std::uint16_t ParsePort(std::string_view text);

}  // namespace orv
