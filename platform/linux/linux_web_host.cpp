#include "platform/linux/linux_web_host.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/linux_web_folder.h"

namespace homewarden::os_linux {
namespace {

constexpr int kBacklog = 4096;

Descriptor bound_socket(int family, const sockaddr* address, socklen_t size) {
  Descriptor socket(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket.is_open()) return socket;
  const int on = 1;
  const int off = 0;
  // So that a server that was stopped can start again while old connections fade.
  ::setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (family == AF_INET6) ::setsockopt(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, &off, sizeof off);
  if (::bind(socket.get(), address, size) != 0 || ::listen(socket.get(), kBacklog) != 0) {
    const int error = errno;
    socket = Descriptor();
    errno = error;
  }
  return socket;
}

Descriptor listen_v4(in_addr address, std::uint16_t port) {
  sockaddr_in v4{};
  v4.sin_family = AF_INET;
  v4.sin_port = htons(port);
  v4.sin_addr = address;
  return bound_socket(AF_INET, reinterpret_cast<const sockaddr*>(&v4), sizeof v4);
}

Descriptor listen_v6(const in6_addr& address, std::uint16_t port) {
  sockaddr_in6 v6{};
  v6.sin6_family = AF_INET6;
  v6.sin6_port = htons(port);
  v6.sin6_addr = address;
  return bound_socket(AF_INET6, reinterpret_cast<const sockaddr*>(&v6), sizeof v6);
}

Descriptor listening(const std::string& address, std::uint16_t port) {
  in_addr v4{};
  in6_addr v6{};
  if (inet_pton(AF_INET, address.c_str(), &v4) == 1) return listen_v4(v4, port);
  if (inet_pton(AF_INET6, address.c_str(), &v6) == 1) return listen_v6(v6, port);
  if (!address.empty()) return Descriptor();
  Descriptor both = listen_v6(in6addr_any, port);
  const bool no_v6 = errno == EAFNOSUPPORT || errno == EADDRNOTAVAIL;
  return both.is_open() || !no_v6 ? std::move(both) : listen_v4({htonl(INADDR_ANY)}, port);
}

// In the form that IPv4 addresses have among those of IPv6.
NetworkAddress mapped(const in_addr& number) {
  NetworkAddress address;
  address.bytes[10] = address.bytes[11] = 0xff;
  std::memcpy(address.bytes.data() + 12, &number, sizeof number);
  return address;
}

// For each address of a network interface that is up, but for the loopback.
template <class Function>
void for_each_interface(Function function) {
  ifaddrs* list = nullptr;
  if (::getifaddrs(&list) != 0) return;
  const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owned(list, &::freeifaddrs);
  for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next)
    if (entry->ifa_addr != nullptr && (entry->ifa_flags & IFF_UP) != 0 &&
        (entry->ifa_flags & IFF_LOOPBACK) == 0)
      function(*entry);
}

class EpollSet : public SocketSet {
 public:
  int descriptor() const override { return epoll_.get(); }
  bool add(int socket) override {
    epoll_event readable{};
    readable.events = EPOLLIN;
    return ::epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, socket, &readable) == 0;
  }
  void remove(int socket) override { ::epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, socket, nullptr); }

 private:
  const Descriptor epoll_{::epoll_create1(EPOLL_CLOEXEC)};
};

}  // namespace

Handle LinuxWebHost::listen(const std::string& address, std::uint16_t port) {
  return handle_of(listening(address, port));
}

Handle LinuxWebHost::duplicate(const Handle& socket) {
  return handle_of(Descriptor(::fcntl(socket.get(), F_DUPFD_CLOEXEC, 0)));
}

std::unique_ptr<SocketSet> LinuxWebHost::socket_set() {
  return std::make_unique<EpollSet>();
}

NetworkAddress LinuxWebHost::address_of(const sockaddr* from) {
  NetworkAddress address;
  if (from != nullptr && from->sa_family == AF_INET) {
    sockaddr_in v4{};
    std::memcpy(&v4, from, sizeof v4);
    address = mapped(v4.sin_addr);
  } else if (from != nullptr && from->sa_family == AF_INET6) {
    sockaddr_in6 v6{};
    std::memcpy(&v6, from, sizeof v6);
    std::memcpy(address.bytes.data(), &v6.sin6_addr, address.bytes.size());
  }
  return address;
}

NetworkAddress LinuxWebHost::called_address(int socket) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  return ::getsockname(socket, plain, &size) == 0 ? address_of(plain) : NetworkAddress();
}

std::ptrdiff_t LinuxWebHost::receive(int socket, void* data, std::size_t room) {
  return ::recv(socket, data, room, 0);
}

std::ptrdiff_t LinuxWebHost::send(int socket, const void* data, std::size_t size) {
  return ::send(socket, data, size, MSG_NOSIGNAL);
}

void LinuxWebHost::send_at_once(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void LinuxWebHost::shut_down(int socket) {
  ::shutdown(socket, SHUT_RDWR);
}

void LinuxWebHost::expect_reader(int socket, std::chrono::milliseconds patience) {
  const int kept = 64 * 1024;
  ::setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &kept, sizeof kept);
  const auto limit = static_cast<unsigned>(patience.count());
  ::setsockopt(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, &limit, sizeof limit);
}

std::vector<bool> LinuxWebHost::hung_up(const std::vector<int>& sockets) {
  std::vector<pollfd> polled;
  for (const int socket : sockets) polled.push_back({socket, POLLRDHUP, 0});
  std::vector<bool> ended(sockets.size());
  if (::poll(polled.data(), polled.size(), 0) <= 0) return ended;
  for (std::size_t i = 0; i < polled.size(); ++i) ended[i] = polled[i].revents != 0;
  return ended;
}

std::optional<std::size_t> LinuxWebHost::most_descriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return std::nullopt;
  return limit.rlim_cur;
}

std::vector<std::string> LinuxWebHost::machine_names() {
  std::array<char, 256> buffer{};
  if (gethostname(buffer.data(), buffer.size() - 1) != 0) return {};
  const std::string name = buffer.data();
  if (name.empty()) return {};
  const std::string first_label = name.substr(0, name.find('.'));
  return first_label == name ? std::vector{name} : std::vector{name, first_label};
}

std::vector<std::string> LinuxWebHost::network_addresses() {
  std::vector<std::string> addresses;
  for_each_interface([&](const ifaddrs& entry) {
    if (entry.ifa_addr->sa_family != AF_INET) return;
    sockaddr_in address{};
    std::memcpy(&address, entry.ifa_addr, sizeof address);
    std::array<char, INET_ADDRSTRLEN> text{};
    if (::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size()) != nullptr)
      addresses.emplace_back(text.data());
  });
  return addresses;
}

std::vector<NetworkPrefix> LinuxWebHost::on_link_prefixes() {
  std::vector<NetworkPrefix> prefixes;
  for_each_interface([&](const ifaddrs& entry) {
    const int family = entry.ifa_addr->sa_family;
    const bool is_line = (entry.ifa_flags & IFF_POINTOPOINT) != 0;
    if (is_line || entry.ifa_netmask == nullptr || (family != AF_INET && family != AF_INET6))
      return;
    // In the form of IPv6 a mask of IPv4 has 96 bits in front of it, of which its form shows none.
    const NetworkAddress mask = address_of(entry.ifa_netmask);
    unsigned bits = family == AF_INET ? 96 : 0;
    for (std::size_t i = bits / 8; i < mask.bytes.size(); ++i)
      bits += static_cast<unsigned>(std::popcount(mask.bytes[i]));
    prefixes.push_back({address_of(entry.ifa_addr), bits});
  });
  return prefixes;
}

std::unique_ptr<WebFolder> LinuxWebHost::folder(std::filesystem::path path) {
  return std::make_unique<LinuxWebFolder>(std::move(path));
}

}  // namespace homewarden::os_linux
