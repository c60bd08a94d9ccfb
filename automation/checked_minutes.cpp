#include "automation/checked_minutes.h"

#include <algorithm>
#include <chrono>

#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

constexpr std::size_t kSpans = 8;
constexpr days kRemembered{1};
constexpr hours kSure{1};
constexpr hours kAhead{3};

// The last of its minutes before `now`; nothing when they all come later.
std::optional<Minute> last_before(const MinuteSpan& span, Minute now) {
  const Minute before = now - minutes(1);
  if (span.first > before) return std::nullopt;
  return std::min(span.last, before);
}

}  // namespace

std::optional<MinuteSpan> missed_before(const CheckedMinutes& checked, Minute now) {
  if (checked.empty()) return std::nullopt;
  const auto is_near = [now](Minute minute) { return now - minute <= kLongestGap; };
  // Where the clock went on from; else, for one that is right again, where it was right before.
  std::optional<Minute> last;
  if (checked.back().last < now && is_near(checked.back().last)) {
    last = checked.back().last;
  } else {
    for (const MinuteSpan& span : checked) last = std::max(last, last_before(span, now));
  }
  if (!last || !is_near(*last) || *last + minutes(1) == now) return std::nullopt;
  return MinuteSpan{*last + minutes(1), now - minutes(1)};
}

bool is_long_ago(const CheckedMinutes& checked, Minute now) {
  return std::all_of(checked.begin(), checked.end(),
                     [now](const MinuteSpan& span) { return span.last < now - kLongestGap; });
}

CheckedMinutes with_checked(CheckedMinutes checked, Minute now) {
  const Minute first = missed_before(checked, now).value_or(MinuteSpan{now, now}).first;
  // Longer gaps begin a span, so that what was before stays known: the clock may be wrong now.
  const bool goes_on = !checked.empty() && checked.back().last + minutes(1) == first;
  if (goes_on && now - first <= kRemembered)
    checked.back().last = now;
  else if (checked.empty() || checked.back().last != now)
    checked.push_back({first, now});
  MinuteSpan& newest = checked.back();
  newest.first = std::max(newest.first, newest.last - kRemembered);
  const auto is_in_newest = [newest](const MinuteSpan& span) {
    return newest.first <= span.first && span.last <= newest.last;
  };
  checked.erase(std::remove_if(checked.begin(), checked.end() - 1, is_in_newest),
                checked.end() - 1);
  if (checked.size() > kSpans) checked.erase(checked.begin());
  if (const auto trusted = last_trusted(checked)) {
    std::erase_if(checked, [&](const MinuteSpan& span) { return span.first > *trusted; });
    for (MinuteSpan& span : checked) span.last = std::min(span.last, *trusted);
  }
  return checked;
}

std::optional<Minute> last_trusted(const CheckedMinutes& checked) {
  if (checked.empty()) return std::nullopt;
  const MinuteSpan& newest = checked.back();
  if (newest.last - newest.first < kSure) return std::nullopt;
  return newest.last + kAhead;
}

std::string text_of(const CheckedMinutes& checked) {
  std::string text;
  for (const MinuteSpan& span : checked) {
    if (!text.empty()) text += ' ';
    text += text_of(span.first) + '/' + text_of(span.last);
  }
  return text;
}

CheckedMinutes parse_checked(std::string_view text) {
  constexpr std::size_t kMinute = 16;  // letters
  constexpr std::size_t kSpan = 2 * kMinute + 1;
  CheckedMinutes checked;
  for (; text.size() >= kSpan; text.remove_prefix(std::min(kSpan + 1, text.size()))) {
    const auto first = parse_minute(text.substr(0, kMinute));
    const auto last = parse_minute(text.substr(kMinute + 1, kMinute));
    if (first && last && *first <= *last) checked.push_back({*first, *last});
  }
  return checked;
}

}  // namespace homewarden
