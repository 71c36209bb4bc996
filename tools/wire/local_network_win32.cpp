#include <winsock2.h>
#include <windows.h>

#include <iphlpapi.h>
#include <ws2tcpip.h>

#include <cstring>

#include "core/runtime_error.h"
#include "tools/wire/local_network.h"
#include "tools/wire/winsock_win32.h"

namespace wire {
namespace {

[[noreturn]] void Fail(int error) { throw core::RuntimeError(error, SystemErrorText(error)); }

std::string Utf8(const wchar_t* wide) {
  char text[1024] = "";
  ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, sizeof text, nullptr, nullptr);
  return text;
}

std::vector<char> AdapterList() {
  ULONG size = 16 * 1024;
  for (;;) {
    std::vector<char> list(size);
    const ULONG flags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    const ULONG error =
        ::GetAdaptersAddresses(AF_INET, flags, nullptr, reinterpret_cast<IP_ADAPTER_ADDRESSES*>(list.data()), &size);
    if (error == ERROR_SUCCESS) return list;
    if (error == ERROR_NO_DATA) return {};
    if (error != ERROR_BUFFER_OVERFLOW) Fail(static_cast<int>(error));
  }
}

Interface Described(const IP_ADAPTER_ADDRESSES& adapter, const IP_ADAPTER_UNICAST_ADDRESS& unicast) {
  sockaddr_in address;
  std::memcpy(&address, unicast.Address.lpSockaddr, sizeof address);
  return {.name = Utf8(adapter.FriendlyName),
          .address = ::ntohl(address.sin_addr.s_addr),
          .isUp = adapter.OperStatus == IfOperStatusUp,
          .broadcasts = adapter.IfType != IF_TYPE_SOFTWARE_LOOPBACK && adapter.IfType != IF_TYPE_PPP};
}

}  // namespace

std::vector<Interface> Interfaces() {
  const std::vector<char> list = AdapterList();
  std::vector<Interface> found;
  if (list.empty()) return found;
  for (auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(list.data()); adapter; adapter = adapter->Next)
    for (auto* unicast = adapter->FirstUnicastAddress; unicast; unicast = unicast->Next)
      found.push_back(Described(*adapter, *unicast));
  return found;
}

std::string HostName() {
  wchar_t name[256] = L"";
  DWORD size = 256;
  ::GetComputerNameW(name, &size);
  return Utf8(name);
}

std::string LogonName() {
  wchar_t name[257] = L"";
  DWORD size = 257;
  ::GetUserNameW(name, &size);
  return Utf8(name);
}

}  // namespace wire
