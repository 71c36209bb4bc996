#include "bench/bare_receive.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace bench {
namespace {

constexpr std::string_view kDatagram = "user12345|S/1";

// A socket that sends to itself.
class Loopback {
 public:
  Loopback() : socket_(::socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    const bool ready = ::bind(socket_, generic, size) == 0 && ::getsockname(socket_, generic, &size) == 0 &&
                       ::connect(socket_, generic, size) == 0;
    if (!ready) std::abort();
  }
  ~Loopback() { ::close(socket_); }
  Loopback(const Loopback&) = delete;
  Loopback& operator=(const Loopback&) = delete;

  void Send() {
    if (::send(socket_, kDatagram.data(), kDatagram.size(), 0) < 0) std::abort();
  }
  void Receive() {
    char buffer[65535];
    if (::recv(socket_, buffer, sizeof buffer, 0) < 0) std::abort();
  }

 private:
  int socket_;
};

}  // namespace

double ReceiveDatagrams(std::size_t count) {
  static Loopback loopback;
  for (std::size_t i = 0; i < count; ++i) loopback.Send();
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t i = 0; i < count; ++i) loopback.Receive();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double BareReceive() {
  static const double median = [] {
    std::vector<double> seconds(501);
    for (double& each : seconds) each = ReceiveDatagrams(kMaxWaiting) / kMaxWaiting;
    std::ranges::nth_element(seconds, seconds.begin() + 250);
    return seconds[250];
  }();
  return median;
}

}  // namespace bench
