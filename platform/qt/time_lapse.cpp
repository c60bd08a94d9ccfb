#include "platform/qt/time_lapse.h"

#include <charconv>
#include <cstdint>

namespace homewarden::qt {
namespace {

constexpr int kLargestFactor = 1000;
// Far beyond any clock, and a thousand times as much still fits.
constexpr std::int64_t kLastSecond = 1'000'000'000'000;

// The whole text has to be a number without a sign.
template <class Number>
bool read_number(std::string_view text, Number& number) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && text.front() != '-';
}

}  // namespace

std::optional<TimeLapse> parse_time_lapse(std::string_view text) {
  const auto at = text.find('@');
  if (at == std::string_view::npos) return std::nullopt;
  TimeLapse lapse;
  std::int64_t seconds = 0;
  if (!read_number(text.substr(0, at), lapse.factor) || !read_number(text.substr(at + 1), seconds))
    return std::nullopt;
  if (lapse.factor < 1 || lapse.factor > kLargestFactor || seconds > kLastSecond)
    return std::nullopt;
  lapse.origin = std::chrono::seconds(seconds);
  return lapse;
}

}  // namespace homewarden::qt
