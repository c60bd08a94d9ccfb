#include "platform/http/host_name.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "platform/http/address.h"

namespace homewarden::http {
namespace {

struct HostAndPort {
  std::string host;  // lower-case, an IPv6 address in its brackets
  std::string port;  // "" when it was left out
};

bool is_name(std::string_view host) {
  return !host.empty() && std::all_of(host.begin(), host.end(), [](char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '-' ||
           letter == '.' || letter == '_';
  });
}

bool is_bracketed_address(std::string_view host) {
  return host.size() > 2 && host.front() == '[' && host.back() == ']' &&
         parse_address(host.substr(1, host.size() - 2)).has_value();
}

std::optional<HostAndPort> parse_host(std::string_view text) {
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : 0;
  if (bracket == std::string_view::npos) return std::nullopt;
  const std::size_t colon = text.find(':', bracket);
  HostAndPort parsed;
  parsed.host = to_lower(text.substr(0, colon));
  if (colon != std::string_view::npos) parsed.port = text.substr(colon + 1);
  if (parsed.port.size() > 5 || parsed.port.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  // A name may end in the dot that stands for the root of all names.
  if (parsed.host.ends_with('.')) parsed.host.pop_back();
  if (!is_name(parsed.host) && !is_bracketed_address(parsed.host)) return std::nullopt;
  return parsed;
}

bool is_name_of_home(std::string_view host) {
  constexpr std::array<std::string_view, 7> kEnds{".local",     ".localdomain", ".lan", ".home",
                                                  ".home.arpa", ".internal",    ".box"};
  if (host.starts_with('.')) return false;
  return host.find('.') == std::string_view::npos ||
         std::any_of(kEnds.begin(), kEnds.end(), [&](std::string_view end) {
           return host.size() > end.size() && host.ends_with(end);
         });
}

struct Web {
  bool https = false;
  HostAndPort place;
};

std::optional<Web> parse_web(std::string_view address) {
  const std::string lower = to_lower(address);
  Web web;
  std::size_t start = 7;
  if (lower.starts_with("https://")) {
    web.https = true;
    start = 8;
  } else if (!lower.starts_with("http://")) {
    return std::nullopt;
  }
  const std::string_view rest = std::string_view(lower).substr(start);
  auto place = parse_host(rest.substr(0, rest.find_first_of("/?#")));
  if (!place) return std::nullopt;
  web.place = std::move(*place);
  if (web.place.port.empty()) web.place.port = web.https ? "443" : "80";
  return web;
}

}  // namespace

bool is_own_host(std::string_view host, const std::vector<std::string>& own_names) {
  const auto parsed = parse_host(host);
  if (!parsed) return false;
  if (is_bracketed_address(parsed->host) || parse_address(parsed->host)) return true;
  if (is_name_of_home(parsed->host)) return true;
  return std::any_of(own_names.begin(), own_names.end(),
                     [&](const std::string& name) { return to_lower(name) == parsed->host; });
}

std::optional<std::string> host_without_port(std::string_view host) {
  auto parsed = parse_host(host);
  if (!parsed) return std::nullopt;
  return std::move(parsed->host);
}

bool is_host_name(std::string_view text) {
  return text.size() <= 253 && text.find(':') == std::string_view::npos && parse_host(text);
}

std::optional<std::string> origin_of(std::string_view address) {
  const auto web = parse_web(address);
  if (!web) return std::nullopt;
  return (web->https ? "https://" : "http://") + web->place.host + ":" + web->place.port;
}

bool is_of_host(std::string_view address, std::string_view host, std::optional<bool> https) {
  const auto theirs = parse_web(address);
  auto ours = parse_host(host);
  if (!theirs || !ours) return false;
  if (https && theirs->https != *https) return false;
  if (ours->port.empty()) ours->port = theirs->https ? "443" : "80";
  return theirs->place.host == ours->host && theirs->place.port == ours->port;
}

}  // namespace homewarden::http
