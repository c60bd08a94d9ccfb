#include "automation/checked_minutes.h"

#include <algorithm>
#include <chrono>

namespace homewarden {
namespace {

using std::chrono::minutes;

constexpr std::size_t kSpans = 16;  // one more for each jump of the clock

bool contains(const CheckedMinutes& checked, Minute minute) {
  return std::any_of(checked.begin(), checked.end(), [minute](const MinuteSpan& span) {
    return span.first <= minute && minute <= span.last;
  });
}

// The first minute that a run at `now` makes good; `now` itself when the clock did not skip any.
Minute first_to_check(const CheckedMinutes& checked, Minute now) {
  if (checked.empty() || now <= checked.back().last) return now;
  return std::max(checked.back().last + minutes(1), now - kCatchUp);
}

}  // namespace

std::vector<MinuteCheck> minutes_to_check(const CheckedMinutes& checked, Minute now) {
  if (!checked.empty() && now == checked.back().last) return {};
  std::vector<MinuteCheck> result;
  for (Minute minute = first_to_check(checked, now); minute <= now; minute += minutes(1)) {
    const bool repeated = contains(checked, minute);
    if (!repeated || minute == now) result.push_back({minute, repeated});
  }
  return result;
}

CheckedMinutes with_checked(CheckedMinutes checked, Minute now) {
  const Minute first = first_to_check(checked, now);
  if (!checked.empty() && first == checked.back().last + minutes(1))
    checked.back().last = now;
  else
    checked.push_back({first, now});
  for (MinuteSpan& span : checked) span.first = std::max(span.first, span.last - kRemembered);
  if (checked.size() > kSpans) checked.erase(checked.begin());
  return checked;
}

}  // namespace homewarden
