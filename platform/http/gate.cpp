#include "platform/http/gate.h"

#include "platform/http/api_form.h"
#include "platform/http/api_path.h"
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

Gate::Gate(GateRules rules)
    : rules_(std::move(rules)), all_names_(rules_.own_names), tokens_(std::move(rules_.tokens)) {
  all_names_.insert(all_names_.end(), rules_.names.begin(), rules_.names.end());
}

std::variant<Admission, Refusal> Gate::check(const RequestHead& head, const Clock& clock) {
  const Visitor visitor = visitor_of(head, rules_.proxies);
  if (!rules_.log_in)
    if (auto refusal = check_origin(visitor, clock.uptime())) return std::move(*refusal);
  const auto path = api_path(head.path());
  if (auto refusal = check_form(head, path.has_value())) return std::move(*refusal);
  if (auto refusal = check_https(head, visitor, clock.uptime())) return std::move(*refusal);
  if (path && is_preflight(head)) return check_preflight(head);
  Admission admission;
  admission.from = visitor.from;
  admission.query = head.query();
  if (path) admission.call = call_of(head, visitor, *path);
  std::string cookie;
  if (path && head.authorization && is_bearer(*head.authorization)) {
    auto verdict = tokens_.check(*head.authorization, visitor.from, clock.uptime());
    if (auto* refusal = std::get_if<Refusal>(&verdict)) return std::move(*refusal);
    auto& token = std::get<ApiToken>(verdict);
    admission.token = std::move(token.hash);
    admission.call->token = std::move(token.name);
    admission.call->may_change = token.may_change;
  } else if (rules_.log_in) {
    auto verdict = rules_.log_in->check(head, visitor, clock);
    if (auto* refusal = std::get_if<Refusal>(&verdict)) return std::move(*refusal);
    cookie = std::get<std::string>(std::move(verdict));
  }
  auto verdict = path ? check_call(head, visitor, std::move(admission))
                      : check_page(head, visitor, std::move(admission));
  auto* admitted = std::get_if<Admission>(&verdict);
  if (admitted != nullptr && admitted->shows_states && !cookie.empty())
    admitted->headers.emplace_back("Set-Cookie", std::move(cookie));
  return verdict;
}

std::variant<Admission, Refusal> Gate::check_page(const RequestHead& head, const Visitor& visitor,
                                                  Admission admission) const {
  auto page = safe_path(head.path());
  if (!page) return Refusal{404, "There is no such page."};
  admission.page = std::move(*page);
  if (rules_.switches) admission.switches = rules_.switches(admission.page, admission.query);
  std::optional<StatePage> states;
  if (!admission.switches && rules_.state_pages)
    states = rules_.state_pages(admission.page, admission.query);
  if (!admission.switches && !states) return admission;
  admission.shows_states = true;
  // Foreign pages can name what is fetched so, and browsers then say that nobody's page causes it.
  if (head.in_advance && (admission.switches || states->remembered))
    return Refusal{503, "Nothing is switched or remembered for what a browser fetches in advance."};

  const bool own_host = has_own_host(head);
  const Cause cause = cause_of(head, visitor.https, rules_.origins);
  auto refusal = admission.switches ? check_switch(head, own_host, cause)
                                    : check_state_page(head, own_host, cause, *states, admission);
  if (refusal) return std::move(*refusal);
  admission.headers = cross_origin(head);
  return admission;
}

// A browser is answered for the pages that it is answered for otherwise. A token is not sent by a
// browser of its own accord, so that whoever has sent it means it.
std::variant<Admission, Refusal> Gate::check_call(const RequestHead& head, const Visitor& visitor,
                                                  Admission admission) const {
  const bool own_host = has_own_host(head);
  const Cause cause = cause_of(head, visitor.https, rules_.origins);
  if (!admission.token.empty()) {
    // It is for whoever has the token.
  } else if (only_asks(head)) {
    if (!own_host) return under_foreign_name("Nothing is shown");
    if (cause == Cause::kForeign) return shown_to_foreign_page();
  } else if (auto refusal = check_switch(head, own_host, cause)) {
    return std::move(*refusal);
  }
  admission.headers = cross_origin(head);
  return admission;
}

// Such a question comes without a log-in, and its answer tells only which pages are allowed.
Refusal Gate::check_preflight(const RequestHead& head) const {
  if (cross_origin(head).empty()) return shown_to_foreign_page();
  return {204, "", "Access-Control-Max-Age", "600"};
}

Gate::Headers Gate::cross_origin(const RequestHead& head) const {
  if (!head.origin || cause_of(head, std::nullopt, rules_.origins) != Cause::kAllowed) return {};
  Headers headers{{"Access-Control-Allow-Origin", *head.origin},
                  {"Access-Control-Allow-Credentials", "true"},
                  {"Vary", "Origin"}};
  if (!is_for_programs(head.path())) return headers;
  headers.emplace_back("Access-Control-Expose-Headers", "Location, Retry-After");
  if (!is_preflight(head)) return headers;
  headers.emplace_back("Access-Control-Allow-Methods", kMethodsOfCalls);
  headers.emplace_back("Access-Control-Allow-Headers",
                       "Authorization, Content-Type, Last-Event-ID");
  return headers;
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

// Before anybody is asked for a password.
std::optional<Refusal> Gate::check_https(const RequestHead& head, const Visitor& visitor,
                                         std::chrono::milliseconds now) {
  if (!rules_.https || visitor.https.value_or(false)) return std::nullopt;
  const bool at_home = !visitor.by_unknown_proxy && rules_.home.contains(visitor, now);
  const bool logs_in = rules_.log_in || head.authorization;
  return rules_.https->check(head, {at_home, logs_in, has_own_host(head)});
}

std::optional<Refusal> Gate::check_form(const RequestHead& head, bool is_call) const {
  if (is_call ? !is_method_of_calls(head) : !only_asks(head))
    return not_allowed(is_call ? kMethodsOfCalls : "GET, HEAD");
  if (head.uri.size() > kLongestUri) return Refusal{414, "The address is too long."};
  if (head.has_body && !is_call) return Refusal{400, "A question with a body is not understood."};
  if (head.repeats || (head.needs_host && !head.host))
    return Refusal{400, "The request is malformed."};
  if (head.is_absolute && !has_own_host(head))
    return Refusal{421, "This server does not pass requests on to others."};
  return is_call ? check_body(head) : std::nullopt;
}

// A client that knows no host names, of HTTP 1.0, is no browser.
bool Gate::has_own_host(const RequestHead& head) const {
  return head.host ? is_own_host(*head.host, all_names_) : !head.needs_host;
}

Refusal Gate::under_foreign_name(const std::string& what) const {
  return {403, what +
                   ", as this house is not known under the name in the address. Further names that "
                   "are known: " +
                   listed(rules_.names) + ". More can be added" + kPanel};
}

Refusal Gate::shown_to_foreign_page() const {
  return {403, "Nothing is shown to a page of somebody else's. Foreign pages that may look: " +
                   listed(rules_.origins) + ". More can be added" + kPanel};
}

std::optional<Refusal> Gate::check_switch(const RequestHead& head, bool own_host,
                                          Cause cause) const {
  if (head.method == "HEAD") return not_allowed("GET");
  if (!own_host) return under_foreign_name("Nothing is switched");
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
    return own_host ? shown_to_foreign_page() : under_foreign_name("Nothing is shown");
  }
  if (!foreign && (cause != Cause::kUnproven || !states.remembered)) return std::nullopt;
  admission.page = states.home;
  admission.query.clear();
  // A page that is reached under a name of its own could look into this one.
  admission.nameless = !own_host;
  return std::nullopt;
}

}  // namespace homewarden::http
