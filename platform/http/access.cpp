#include "platform/http/access.h"

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

bool ends_in_home_domain(std::string_view host) {
  constexpr std::array<std::string_view, 4> kEnds{".local", ".lan", ".home", ".home.arpa"};
  return std::any_of(kEnds.begin(), kEnds.end(), [&](std::string_view end) {
    return host.size() > end.size() && host.ends_with(end) && !host.starts_with('.');
  });
}

}  // namespace

bool is_own_host(std::string_view host, const std::vector<std::string>& own_names) {
  const auto parsed = parse_host(host);
  if (!parsed) return false;
  if (is_bracketed_address(parsed->host) || parse_address(parsed->host)) return true;
  if (parsed->host == "localhost" || ends_in_home_domain(parsed->host)) return true;
  return std::any_of(own_names.begin(), own_names.end(),
                     [&](const std::string& name) { return to_lower(name) == parsed->host; });
}

bool is_of_host(std::string_view address, std::string_view host) {
  const std::string lower = to_lower(address);
  std::string_view rest = lower;
  std::string usual_port;
  if (rest.starts_with("http://")) {
    rest.remove_prefix(7);
    usual_port = "80";
  } else if (rest.starts_with("https://")) {
    rest.remove_prefix(8);
    usual_port = "443";
  } else {
    return false;
  }
  auto theirs = parse_host(rest.substr(0, rest.find_first_of("/?#")));
  auto ours = parse_host(host);
  if (!theirs || !ours) return false;
  if (theirs->port.empty()) theirs->port = usual_port;
  if (ours->port.empty()) ours->port = usual_port;
  return theirs->host == ours->host && theirs->port == ours->port;
}

bool has_cookie(std::string_view cookies, std::string_view name) {
  while (!cookies.empty()) {
    const std::size_t end = std::min(cookies.find(';'), cookies.size());
    const std::string_view pair = cookies.substr(0, end);
    const std::size_t equals = pair.find('=');
    if (equals != std::string_view::npos && trim_blanks(pair.substr(0, equals)) == name)
      return true;
    cookies.remove_prefix(std::min(end + 1, cookies.size()));
  }
  return false;
}

std::optional<std::string> switch_fault(const RequestHead& head,
                                        const std::vector<std::string>& own_names) {
  if (!head.host || !is_own_host(*head.host, own_names))
    return "Nothing is switched under a host name that is not known to be this machine's.";
  constexpr auto kForeign = "Nothing is switched for a page of somebody else's.";
  if (head.fetch_site && *head.fetch_site != "same-origin" && *head.fetch_site != "none")
    return kForeign;
  if (head.origin && !is_of_host(*head.origin, *head.host)) return kForeign;
  const bool has_referer = head.referer && !head.referer->empty();
  if (has_referer && !is_of_host(*head.referer, *head.host)) return kForeign;
  // A browser does not say where a request comes from when the page forbids it, and leaves
  // Sec-Fetch-Site out without encryption. Programs have no pages to be misled by.
  const bool says_nothing = !head.fetch_site && !head.origin && !has_referer;
  const bool is_browser = head.user_agent && head.user_agent->starts_with("Mozilla/");
  if (says_nothing && is_browser && !has_cookie(head.cookies, kHouseCookie))
    return "Nothing is switched for a browser that has not seen a page of this house: open the "
           "home page first.";
  return std::nullopt;
}

}  // namespace homewarden::http
