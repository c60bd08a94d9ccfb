#include "platform/http/listen_socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <charconv>
#include <cstring>

#include "base/text.h"

namespace homewarden {
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

}  // namespace

std::optional<std::uint16_t> parse_port(const std::string& text) {
  const std::string_view digits = trim_blanks(text);
  std::uint16_t port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  if (error != std::errc() || end != digits.data() + digits.size() || port == 0)
    return std::nullopt;
  return port;
}

Descriptor listen_on(const std::string& address, std::uint16_t port) {
  in_addr v4{};
  in6_addr v6{};
  if (inet_pton(AF_INET, address.c_str(), &v4) == 1) return listen_v4(v4, port);
  if (inet_pton(AF_INET6, address.c_str(), &v6) == 1) return listen_v6(v6, port);
  if (!address.empty()) return Descriptor();
  Descriptor both = listen_v6(in6addr_any, port);
  const bool no_v6 = errno == EAFNOSUPPORT || errno == EADDRNOTAVAIL;
  return both.is_open() || !no_v6 ? std::move(both) : listen_v4({htonl(INADDR_ANY)}, port);
}

}  // namespace homewarden
