#include "platform/http/log_in.h"

#include <algorithm>
#include <utility>

#include "platform/http/cookies.h"

namespace homewarden::http {

using std::chrono::milliseconds;

namespace {

constexpr std::chrono::hours kLately{24};  // for an address
constexpr std::size_t kMostKnown = 1000;

Refusal ask_to_log_in() {
  return {401, "A user name and a password are needed.", "WWW-Authenticate",
          R"(Basic realm="Homewarden", charset="UTF-8")"};
}

long day_of(const LocalTime& time) {
  using namespace std::chrono;
  const year_month_day date(year(time.year), month(static_cast<unsigned>(time.month)),
                            day(static_cast<unsigned>(time.day)));
  return sys_days(date).time_since_epoch().count();
}

}  // namespace

std::variant<std::string, Refusal> LogIn::check(const RequestHead& head, const Visitor& visitor,
                                                const Clock& clock) {
  if (!head.authorization) return ask_to_log_in();
  const milliseconds now = clock.uptime();
  const auto given = cookie(head.cookies, kLoginCookie);
  const long today = day_of(clock.local_time());
  const auto browser = given ? cookies_.read(*given, today) : std::nullopt;
  const bool known = is_known(visitor.from, now);

  milliseconds wait =
      browser ? browser_delays_.wait(browser->id, now) : delays_.wait_of_own(visitor.from, now);
  if (!browser && !known) wait = std::max(wait, delays_.wait_of_others(visitor.from, now));
  if (wait > milliseconds(0))
    return Refusal{429, "Too many wrong passwords; wait before the next one.", "Retry-After",
                   std::to_string(std::chrono::ceil<std::chrono::seconds>(wait).count())};

  if (!credentials_.admit(*head.authorization)) {
    if (browser)
      browser_delays_.wrong(browser->id, now);
    else
      delays_.wrong(visitor.from, now);
    return ask_to_log_in();
  }
  if (browser)
    browser_delays_.right(browser->id);
  else if (!known)  // later a guesser at the same address would be forgiven with each request
    delays_.right(visitor.from);
  remember(visitor.from, now);
  if (browser && browser->day == today) return std::string();
  const std::string lifetime = std::to_string(LoginCookies::kDays * 24 * 60 * 60);
  return std::string(kLoginCookie) + "=" + cookies_.sign(browser, today) +
         "; Path=/; Max-Age=" + lifetime + "; SameSite=Strict; HttpOnly" +
         (visitor.https.value_or(false) ? "; Secure" : "");
}

bool LogIn::is_known(const Address& from, milliseconds now) const {
  const auto found = known_.find(from);
  return found != known_.end() && now - found->second <= kLately;
}

void LogIn::remember(const Address& from, milliseconds now) {
  if (known_.size() >= kMostKnown && !known_.contains(from))
    known_.erase(std::min_element(known_.begin(), known_.end(), [](const auto& a, const auto& b) {
      return a.second < b.second;
    }));
  known_[from] = now;
}

}  // namespace homewarden::http
