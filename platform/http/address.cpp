#include "platform/http/address.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>

namespace homewarden {
namespace {

constexpr std::array<std::uint8_t, 12> kMapped{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff};

Address mapped(const in_addr& number) {
  Address address;
  std::copy(kMapped.begin(), kMapped.end(), address.bytes.begin());
  std::memcpy(address.bytes.data() + kMapped.size(), &number, sizeof number);
  return address;
}

bool is_mapped(const Address& address) {
  return std::equal(kMapped.begin(), kMapped.end(), address.bytes.begin());
}

bool is_private_v4(std::uint8_t first, std::uint8_t second) {
  return first == 127 || first == 10 || (first == 172 && (second & 0xf0) == 16) ||
         (first == 192 && second == 168) || (first == 169 && second == 254);
}

}  // namespace

Address address_of(const sockaddr* from) {
  Address address;
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

std::optional<Address> parse_address(const std::string& text) {
  // A text with a zero byte in it would be read up to there only.
  if (text.find('\0') != std::string::npos) return std::nullopt;
  in_addr v4{};
  if (inet_pton(AF_INET, text.c_str(), &v4) == 1) return mapped(v4);
  Address address;
  if (inet_pton(AF_INET6, text.c_str(), address.bytes.data()) == 1) return address;
  return std::nullopt;
}

bool is_private(const Address& address) {
  const auto& bytes = address.bytes;
  if (is_mapped(address)) return is_private_v4(bytes[12], bytes[13]);
  const bool unique_local = (bytes[0] & 0xfe) == 0xfc;
  const bool link_local = bytes[0] == 0xfe && (bytes[1] & 0xc0) == 0x80;
  return unique_local || link_local || address == parse_address("::1");
}

Address network_of(const Address& address) {
  if (is_mapped(address) || is_private(address)) return address;
  Address network;
  std::copy_n(address.bytes.begin(), 8, network.bytes.begin());
  return network;
}

}  // namespace homewarden
