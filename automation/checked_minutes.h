#pragma once

#include <optional>
#include <vector>

#include "base/date.h"

namespace homewarden {

// The minutes from the first to the last.
struct MinuteSpan {
  Minute first;
  Minute last;
  bool operator==(const MinuteSpan&) const = default;
};

// Which minutes have been looked at: spans in the order in which the clock went through them, the
// newest last. A span behind a later one is of before the clock was set back.
using CheckedMinutes = std::vector<MinuteSpan>;

// A gap that is longer is none: the house was shut down, or the clock is wrong.
inline constexpr std::chrono::days kLongestGap{31};

// The minutes before `now` that nobody has looked at, however many: the program did not run, the
// machine slept, or the clock was set forward. Nothing when there are none, when nothing was looked
// at before, and for a gap longer than kLongestGap. What a clock that is wrong for a while showed
// meanwhile does not count.
std::optional<MinuteSpan> missed_before(const CheckedMinutes& checked, Minute now);

// Whether all of it is longer ago than kLongestGap.
bool is_long_ago(const CheckedMinutes& checked, Minute now);

// `checked` with `now`, and what was missed before it, added. Of each span the last day is kept, of
// the spans the newest 8.
CheckedMinutes with_checked(CheckedMinutes checked, Minute now);

// The last minute that is not ahead of now by more than a clock is moved for summer time, once the
// clock has gone on for an hour since it was set back: it was wrong before, and what it showed then
// is yet to come. Nothing while that is not sure.
std::optional<Minute> last_trusted(const CheckedMinutes& checked);

// As they are written on the disk, "2023-06-20 23:58/2023-06-21 07:29" for each span, and read from
// there again; what cannot be read is left out.
std::string text_of(const CheckedMinutes& checked);
CheckedMinutes parse_checked(std::string_view text);

}  // namespace homewarden
