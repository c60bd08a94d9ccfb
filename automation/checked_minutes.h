#pragma once

#include <vector>

#include "base/date.h"

namespace homewarden {

// A minute whose events are to be looked for. One that the clock shows again after it was set back
// is `repeated`: its daily events have run.
struct MinuteCheck {
  Minute minute;
  bool repeated = false;
  bool operator==(const MinuteCheck&) const = default;
};

// The minutes from the first to the last.
struct MinuteSpan {
  Minute first;
  Minute last;
  bool operator==(const MinuteSpan&) const = default;
};

// Which minutes have been looked at: spans in the order in which the clock went through them, the
// newest last.
using CheckedMinutes = std::vector<MinuteSpan>;

// Minutes that the clock skipped, because the machine slept or it was set forward, are made good up
// to this long ago.
inline constexpr std::chrono::minutes kCatchUp{60};

// How much of the past is remembered before each jump of the clock: a clock that is set back by
// more shows another date, whose events have not run.
inline constexpr std::chrono::minutes kRemembered{24 * 60};

// What a run at `now` has to look at, in order: the minutes skipped since the run before, then
// `now` itself; nothing when the run before was in the same minute. The first run looks at its own
// minute only.
std::vector<MinuteCheck> minutes_to_check(const CheckedMinutes& checked, Minute now);

// `checked` with `now`, and what was skipped before it, added. Of each span the last day is kept,
// of the spans the newest 16; what is older is forgotten and would run again.
CheckedMinutes with_checked(CheckedMinutes checked, Minute now);

}  // namespace homewarden
