#include "platform/http/gate.h"

#include "platform/http/host_name.h"
#include "platform/http/safe_path.h"

namespace homewarden::http {
namespace {

constexpr std::size_t kLongestUri = 4096;
constexpr auto kPanel = " on the panel \"Web Server\" of the Homewarden window.";

Refusal not_allowed(const std::string& methods) {
  return {405, "Only " + methods + " can be asked here.", "Allow", methods};
}

// Names and origins are told to whoever is admitted: they are what a person must compare.
std::string listed(const std::vector<std::string>& entries) {
  std::string text;
  for (const auto& entry : entries) text += (text.empty() ? "" : ", ") + entry;
  return text.empty() ? "none" : text;
}

}  // namespace

Gate::Gate(GateRules rules) : rules_(std::move(rules)), all_names_(rules_.own_names) {
  all_names_.insert(all_names_.end(), rules_.names.begin(), rules_.names.end());
}

std::variant<Admission, Refusal> Gate::check(const RequestHead& head, const Clock& clock) {
  const Visitor visitor = visitor_of(head, rules_.proxies);
  if (!rules_.log_in)
    if (auto refusal = check_origin(visitor, clock.uptime())) return std::move(*refusal);
  if (auto refusal = check_form(head)) return std::move(*refusal);
  std::string cookie;
  if (rules_.log_in) {
    auto verdict = rules_.log_in->check(head, visitor, clock);
    if (auto* refusal = std::get_if<Refusal>(&verdict)) return std::move(*refusal);
    cookie = std::get<std::string>(std::move(verdict));
  }
  auto page = safe_path(head.path());
  if (!page) return Refusal{404, "There is no such page."};
  Admission admission;
  admission.from = visitor.from;
  admission.page = std::move(*page);
  admission.query = head.query();
  if (rules_.switches) admission.switches = rules_.switches(admission.page, admission.query);
  std::optional<StatePage> states;
  if (!admission.switches && rules_.state_pages)
    states = rules_.state_pages(admission.page, admission.query);
  if (!admission.switches && !states) return admission;
  // Foreign pages can name what is fetched so, and browsers then say that nobody's page causes it.
  if (head.in_advance && (admission.switches || states->remembered))
    return Refusal{503, "Nothing is switched or remembered for what a browser fetches in advance."};

  const bool own_host = has_own_host(head);
  const Cause cause = cause_of(head, visitor.https, rules_.origins);
  auto refusal = admission.switches ? check_switch(head, own_host, cause)
                                    : check_state_page(head, own_host, cause, *states, admission);
  if (refusal) return std::move(*refusal);
  if (!cookie.empty()) admission.headers.emplace_back("Set-Cookie", std::move(cookie));
  if (cause == Cause::kAllowed && head.origin) {
    admission.headers.emplace_back("Access-Control-Allow-Origin", *head.origin);
    admission.headers.emplace_back("Access-Control-Allow-Credentials", "true");
    admission.headers.emplace_back("Vary", "Origin");
  }
  return admission;
}

std::optional<Refusal> Gate::check_origin(const Visitor& visitor, std::chrono::milliseconds now) {
  const bool at_home = rules_.home.contains(visitor, now);
  if (at_home && !visitor.by_unknown_proxy) return std::nullopt;
  if (at_home && visitor.by_trusted_proxy)
    return Refusal{403,
                   "Without a password nobody is answered by way of two proxies: the trusted one "
                   "must tell of one client alone, in Forwarded or X-Forwarded-For."};
  if (at_home)
    return Refusal{403, std::string("Without a password nobody is answered by way of a proxy that "
                                    "is not trusted: name it") +
                            kPanel};
  if (visitor.by_trusted_proxy && visitor.from == Address())
    return Refusal{403,
                   "Without a password nobody is answered of whom the proxy does not tell the "
                   "address: it must send either Forwarded or X-Forwarded-For."};
  return Refusal{403, "Without a password only this machine and its own networks are answered."};
}

std::optional<Refusal> Gate::check_form(const RequestHead& head) const {
  if (head.method != "GET" && head.method != "HEAD") return not_allowed("GET, HEAD");
  if (head.uri.size() > kLongestUri) return Refusal{414, "The address is too long."};
  if (head.has_body) return Refusal{400, "A question with a body is not understood."};
  if (head.repeats || (head.needs_host && !head.host))
    return Refusal{400, "The request is malformed."};
  if (head.is_absolute && !has_own_host(head))
    return Refusal{421, "This server does not pass requests on to others."};
  return std::nullopt;
}

// A client that knows no host names, of HTTP 1.0, is no browser.
bool Gate::has_own_host(const RequestHead& head) const {
  return head.host ? is_own_host(*head.host, all_names_) : !head.needs_host;
}

std::optional<Refusal> Gate::check_switch(const RequestHead& head, bool own_host,
                                          Cause cause) const {
  if (head.method != "GET") return not_allowed("GET");
  if (!own_host)
    return Refusal{403,
                   "Nothing is switched, as this house is not known under the name in the address. "
                   "Further names that are known: " +
                       listed(rules_.names) + ". More can be added" + kPanel};
  if (cause == Cause::kOwn || cause == Cause::kAllowed) return std::nullopt;
  const bool may_repeat = is_navigation(head);
  Refusal refusal{403, ""};
  if (cause != Cause::kUnproven)
    refusal.reason = std::string("Nothing is switched for a page of somebody else's. ") +
                     (may_repeat ? "If it was you who pressed, press again. " : "") +
                     "Foreign pages that may switch: " + listed(rules_.origins) +
                     ". More can be added" + kPanel;
  else if (may_repeat)
    refusal.reason =
        "This browser had not seen a page of this house yet, so somebody else's page could have "
        "made the press. If it was you, press again.";
  else
    refusal.reason =
        "Nothing is switched for a browser that has not seen a page of this house: open the home "
        "page first.";
  // A person who sees this may press again. No page can press in their place: none is shown the
  // answer, in a frame neither.
  if (may_repeat) {
    refusal.again = head.uri;
    refusal.sets_cookie = true;
  }
  return refusal;
}

// Somebody else's page learns no states and leaves no trace. A person who follows its link comes to
// the home page.
std::optional<Refusal> Gate::check_state_page(const RequestHead& head, bool own_host, Cause cause,
                                              const StatePage& states, Admission& admission) const {
  const bool foreign = !own_host || cause == Cause::kForeign;
  if (foreign && !is_navigation(head)) {
    if (!own_host)
      return Refusal{403,
                     "Nothing is shown, as this house is not known under the name in the address. "
                     "Further names that are known: " +
                         listed(rules_.names) + ". More can be added" + kPanel};
    return Refusal{403,
                   "Nothing is shown to a page of somebody else's. Foreign pages that may look: " +
                       listed(rules_.origins) + ". More can be added" + kPanel};
  }
  if (!foreign && (cause != Cause::kUnproven || !states.remembered)) return std::nullopt;
  admission.page = states.home;
  admission.query.clear();
  // A page that is reached under a name of its own could look into this one.
  admission.nameless = !own_host;
  return std::nullopt;
}

}  // namespace homewarden::http
