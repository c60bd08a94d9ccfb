#include "platform/http/gate.h"

#include <algorithm>

#include "platform/http/access.h"
#include "platform/http/safe_path.h"

namespace homewarden::http {

using std::chrono::milliseconds;

namespace {

constexpr std::size_t kLongestUri = 4096;

Refusal not_allowed(const std::string& methods) {
  return {405, "Only " + methods + " can be asked here.", "Allow", methods};
}

Refusal ask_to_log_in() {
  return {401, "A user name and a password are needed.", "WWW-Authenticate",
          R"(Basic realm="Homewarden", charset="UTF-8")"};
}

}  // namespace

std::variant<Admission, Refusal> Gate::check(const RequestHead& head, milliseconds now) {
  if (!rules_.log_in && !head.from_here && !is_private(head.from))
    return Refusal{403,
                   "Without a password only this machine and its private network are answered."};
  if (auto refusal = check_form(head)) return std::move(*refusal);
  if (rules_.log_in) {
    if (auto refusal = check_log_in(head, now)) return std::move(*refusal);
  }
  auto page = safe_path(head.path());
  if (!page) return Refusal{404, "There is no such page."};
  std::optional<WebSwitch> switches;
  if (rules_.switches) switches = rules_.switches(*page, std::string(head.query()));
  if (switches) {
    if (head.method != "GET") return not_allowed("GET");
    if (auto fault = switch_fault(head, rules_.own_names)) return Refusal{403, *fault};
  }
  return Admission{std::move(*page), std::move(switches)};
}

std::optional<Refusal> Gate::check_form(const RequestHead& head) const {
  if (head.method != "GET" && head.method != "HEAD") return not_allowed("GET, HEAD");
  if (head.uri.size() > kLongestUri) return Refusal{414, "The address is too long."};
  if (head.has_body) return Refusal{400, "A question with a body is not understood."};
  if (head.repeats || (head.needs_host && !head.host))
    return Refusal{400, "The request is malformed."};
  return std::nullopt;
}

std::optional<Refusal> Gate::check_log_in(const RequestHead& head, milliseconds now) {
  if (!head.authorization) return ask_to_log_in();
  const Address network = network_of(head.from);
  const milliseconds wait =
      std::max(delays_.wait(head.from, now), network_delays_.wait(network, now));
  if (wait > milliseconds(0))
    return Refusal{429, "Too many wrong passwords; wait before the next one.", "Retry-After",
                   std::to_string(std::chrono::ceil<std::chrono::seconds>(wait).count())};
  if (rules_.credentials.admit(*head.authorization)) {
    delays_.right(head.from);
    network_delays_.right(network);
    return std::nullopt;
  }
  delays_.wrong(head.from, now);
  network_delays_.wrong(network, now);
  return ask_to_log_in();
}

}  // namespace homewarden::http
