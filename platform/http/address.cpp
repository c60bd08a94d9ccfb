#include "platform/http/address.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/text.h"

namespace homewarden::http {
namespace {

constexpr std::array<std::uint8_t, 12> kMapped{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff};

bool is_mapped(const Address& address) {
  return std::equal(kMapped.begin(), kMapped.end(), address.bytes.begin());
}

using Place = std::array<std::uint8_t, 16>::iterator;

// The number that a text consists of; nothing for another text, too.
std::optional<unsigned> number(std::string_view text, std::size_t most_digits, int base) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && text.size() <= most_digits ? std::optional(value) : std::nullopt;
}

// Four numbers with dots, without leading zeros, which some read as octal.
bool read_v4(std::string_view text, Place to) {
  for (int i = 0; i < 4; ++i) {
    const std::size_t dot = text.find('.');
    if ((dot == std::string_view::npos) != (i == 3)) return false;
    const std::string_view part = text.substr(0, dot);
    const auto value = number(part, 3, 10);
    if (!value || *value > 255 || (part.size() > 1 && part.front() == '0')) return false;
    *to++ = static_cast<std::uint8_t>(*value);
    text.remove_prefix(i == 3 ? text.size() : dot + 1);
  }
  return true;
}

// Groups of hexadecimal digits with colons, the last two perhaps as IPv4; `to` is moved behind
// them.
bool read_groups(std::string_view text, Place& to, Place end) {
  while (!text.empty()) {
    const std::size_t colon = text.find(':');
    const std::string_view group = text.substr(0, colon);
    const bool last = colon == std::string_view::npos;
    if (last && end - to >= 4 && read_v4(group, to)) {
      to += 4;
      return true;
    }
    const auto value = number(group, 4, 16);
    if (!value || end - to < 2) return false;
    *to++ = static_cast<std::uint8_t>(*value >> 8U);
    *to++ = static_cast<std::uint8_t>(*value & 0xffU);
    if (last) return true;
    text.remove_prefix(colon + 1);
    if (text.empty()) return false;  // a colon at the end
  }
  return true;
}

// One "::" stands for as many zeros as are missing, at least one group.
bool read_v6(std::string_view text, Address& address) {
  const std::size_t gap = text.find("::");
  Place filled = address.bytes.begin();
  const Place end = address.bytes.end();
  if (!read_groups(text.substr(0, gap), filled, end)) return false;
  if (gap == std::string_view::npos) return filled == end;
  Address behind;
  Place last = behind.bytes.begin();
  if (end - filled < 2 || !read_groups(text.substr(gap + 2), last, behind.bytes.end() - 2) ||
      last - behind.bytes.begin() > end - filled - 2)
    return false;
  std::copy(behind.bytes.begin(), last, end - (last - behind.bytes.begin()));
  return true;
}

unsigned group_of(const Address& address, std::size_t group) {
  return address.bytes[2 * group] * 256U + address.bytes[2 * group + 1];
}

struct Zeros {
  std::size_t first = 0;
  std::size_t count = 0;  // of groups
};

Zeros longest_zeros(const Address& address) {
  Zeros longest;
  Zeros now;
  for (std::size_t group = 0; group < 8; ++group) {
    now = group_of(address, group) == 0 ? Zeros{group - now.count, now.count + 1} : Zeros{};
    if (now.count > longest.count) longest = now;
  }
  return longest;
}

bool is_private_v4(std::uint8_t first, std::uint8_t second) {
  return first == 127 || first == 10 || (first == 172 && (second & 0xf0) == 16) ||
         (first == 192 && second == 168) || (first == 169 && second == 254);
}

Address first_bytes(const Address& address, std::ptrdiff_t count) {
  if (is_mapped(address) || address == parse_address("::1")) return address;
  Address network;
  std::copy_n(address.bytes.begin(), count, network.bytes.begin());
  return network;
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

std::optional<Address> parse_address(std::string_view text) {
  Address address;
  if (read_v4(text, address.bytes.begin() + 12)) {
    std::copy(kMapped.begin(), kMapped.end(), address.bytes.begin());
    return address;
  }
  return read_v6(text, address) ? std::optional(address) : std::nullopt;
}

std::string text_of(const Address& address) {
  std::string text;
  if (is_mapped(address)) {
    for (std::size_t i = 12; i < 16; ++i)
      text += (i == 12 ? "" : ".") + std::to_string(address.bytes[i]);
    return text;
  }
  const Zeros gap = longest_zeros(address);
  for (std::size_t group = 0; group < 8; ++group) {
    if (gap.count > 1 && group == gap.first) text += "::";
    if (gap.count > 1 && group >= gap.first && group < gap.first + gap.count) continue;
    if (!text.empty() && text.back() != ':') text += ':';
    std::array<char, 4> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), group_of(address, group), 16)
            .ptr;
    text.append(digits.data(), end);
  }
  return text;
}

std::optional<NetworkPrefix> parse_prefix(std::string_view text) {
  const std::size_t slash = text.find('/');
  const auto address = parse_address(text.substr(0, slash));
  if (!address) return std::nullopt;
  if (slash == std::string_view::npos) return NetworkPrefix{*address, 128};
  const bool is_v4 = text.substr(0, slash).find(':') == std::string_view::npos;
  const auto bits = number(text.substr(slash + 1), 3, 10);
  if (!bits || *bits == 0 || *bits > (is_v4 ? 32U : 128U)) return std::nullopt;
  return NetworkPrefix{*address, is_v4 ? 96 + *bits : *bits};
}

bool is_private(const Address& address) {
  const auto& bytes = address.bytes;
  if (is_mapped(address)) return is_private_v4(bytes[12], bytes[13]);
  const bool unique_local = (bytes[0] & 0xfe) == 0xfc;
  const bool link_local = bytes[0] == 0xfe && (bytes[1] & 0xc0) == 0x80;
  return unique_local || link_local || address == parse_address("::1");
}

Address network_of(const Address& address) {
  return first_bytes(address, 8);
}

Address site_of(const Address& address) {
  return first_bytes(address, 6);
}

}  // namespace homewarden::http
