#include "platform/http/cause.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "base/text.h"
#include "platform/http/cookies.h"
#include "platform/http/host_name.h"

namespace homewarden::http {
namespace {

bool names_one_of(const std::optional<std::string>& address,
                  const std::vector<std::string>& allowed) {
  if (!address || allowed.empty()) return false;
  const auto origin = origin_of(*address);
  return origin && std::find(allowed.begin(), allowed.end(), *origin) != allowed.end();
}

bool holds_one_of(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return contains_ignoring_case(text, word); });
}

}  // namespace

Cause cause_of(const RequestHead& head, std::optional<bool> https,
               const std::vector<std::string>& allowed) {
  const bool has_referer = head.referer && !head.referer->empty();
  if (head.origin ? names_one_of(head.origin, allowed) : names_one_of(head.referer, allowed))
    return Cause::kAllowed;
  // Pages cannot write this header. It is enough: behind a proxy the host is often another.
  if (head.fetch_site == "same-origin") return Cause::kOwn;
  if (head.fetch_site && *head.fetch_site != "none") return Cause::kForeign;
  const std::string_view host = head.host ? std::string_view(*head.host) : std::string_view();
  if (head.origin && !is_of_host(*head.origin, host, https)) return Cause::kForeign;
  if (has_referer && !is_of_host(*head.referer, host, https)) return Cause::kForeign;
  // A browser does not say where a request comes from when the page forbids it, and leaves
  // Sec-Fetch-Site out without encryption. Programs have no pages to be misled by.
  if (head.fetch_site || head.origin || has_referer) return Cause::kOwn;
  if (!head.user_agent || !shows_foreign_content(*head.user_agent)) return Cause::kOwn;
  return cookie(head.cookies, kHouseCookie) ? Cause::kOwn : Cause::kUnproven;
}

bool shows_foreign_content(std::string_view user_agent) {
  const std::initializer_list<std::string_view> mail_and_messages{
      "office",  "outlook", "thunderbird", "evolution",   "excel",        "powerpoint",
      "onenote", "word/",   "whatsapp",    "externalhit", "linkexpanding"};
  const std::initializer_list<std::string_view> scripting_hosts{"powershell", "winhttprequest"};
  if (holds_one_of(user_agent, mail_and_messages)) return true;
  if (user_agent.starts_with("Opera/")) return true;
  return user_agent.starts_with("Mozilla/") && !holds_one_of(user_agent, scripting_hosts);
}

bool is_navigation(const RequestHead& head) {
  if (head.method != "GET") return false;
  if (head.fetch_mode || head.fetch_dest)
    return head.fetch_mode == "navigate" && head.fetch_dest.value_or("document") == "document";
  // Without encryption browsers leave these out. What loads pictures and data asks for other types,
  // and what looks at the answer sends its origin.
  return head.takes_html && !head.origin;
}

}  // namespace homewarden::http
