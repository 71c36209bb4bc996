#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "core/runtime_error.h"
#include "tools/wire/local_network.h"

namespace wire {

std::vector<Interface> Interfaces() {
  ifaddrs* first = nullptr;
  if (::getifaddrs(&first) != 0) throw core::RuntimeError(errno, std::strerror(errno));
  const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(first, ::freeifaddrs);
  std::vector<Interface> found;
  for (const ifaddrs* each = first; each; each = each->ifa_next) {
    if (!each->ifa_addr || each->ifa_addr->sa_family != AF_INET) continue;
    sockaddr_in address;
    std::memcpy(&address, each->ifa_addr, sizeof address);
    found.push_back({.name = each->ifa_name,
                     .address = ::ntohl(address.sin_addr.s_addr),
                     .isUp = (each->ifa_flags & IFF_RUNNING) != 0,
                     .broadcasts = (each->ifa_flags & IFF_BROADCAST) != 0});
  }
  return found;
}

std::string HostName() {
  char name[256] = "";
  ::gethostname(name, sizeof name - 1);
  return name;
}

std::string LogonName() {
  const passwd* user = ::getpwuid(::getuid());
  return user ? user->pw_name : "user" + std::to_string(::getuid());
}

}  // namespace wire
