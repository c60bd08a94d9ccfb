#include "tools/emulator/interface_status.h"

#include <bit>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

constexpr int kFirmwareRevision = 8;
constexpr std::int64_t kDaySeconds = 24 * 60 * 60;

// Flags in the last byte of a clock setting.
constexpr int kClearBatteryTimer = 0x02;
constexpr int kClearMonitoredStatus = 0x01;

char low_byte(std::int64_t value) {
  return static_cast<char>(value & 0xFF);
}

}  // namespace

void InterfaceStatus::set_clock(std::string_view bytes) {
  const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  set_at_ = agenda_.now();
  seconds_of_day_ = at(0) + at(1) * 60 + at(2) * 7200;
  day_of_year_ = at(3) + ((at(4) & 0x80) << 1);
  weekday_ = (at(4) & 0x7F) == 0 ? 0 : std::countr_zero(at(4));
  const int house = cm11::line_index(at(5) >> 4);
  if (house != monitored_house_ || (at(5) & kClearMonitoredStatus) != 0) {
    addressed_ = on_ = dimmed_ = 0;
    function_heard_ = false;
  }
  monitored_house_ = house;
  if ((at(5) & kClearBatteryTimer) != 0) battery_minutes_ = 0;
}

void InterfaceStatus::hear(const Transmission& what) {
  if (what.house != monitored_house_ || !what.extended.empty()) return;
  if (!what.function) {
    if (function_heard_) addressed_ = 0;
    function_heard_ = false;
    addressed_ = static_cast<std::uint16_t>(addressed_ | 1U << cm11::line_code(what.code - 1));
    return;
  }
  function_heard_ = true;
  switch (what.code) {
    case kX10On:
      on_ = on_ | addressed_;
      break;
    case kX10Off:
      on_ = static_cast<std::uint16_t>(on_ & ~addressed_);
      dimmed_ = static_cast<std::uint16_t>(dimmed_ & ~addressed_);
      break;
    case kX10Dim:
    case kX10Bright:
      on_ = on_ | addressed_;
      dimmed_ = dimmed_ | addressed_;
      break;
    case kX10AllUnitsOff:
    case kX10AllLightsOff:
      on_ = dimmed_ = 0;
      break;
    default:
      break;
  }
}

std::string InterfaceStatus::bytes() const {
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::seconds>(agenda_.now() - set_at_).count();
  const std::int64_t seconds = seconds_of_day_ + elapsed;
  const std::int64_t days = seconds / kDaySeconds;
  const std::int64_t today = seconds % kDaySeconds;
  const std::int64_t day = (day_of_year_ + days) % 366;
  const auto weekday = static_cast<unsigned>((weekday_ + days) % 7);

  std::string bytes;
  bytes += low_byte(battery_minutes_);
  bytes += low_byte(battery_minutes_ >> 8);
  bytes += low_byte(today % 60);
  bytes += low_byte(today / 60 % 120);
  bytes += low_byte(today / 7200);
  bytes += low_byte(day);
  bytes += low_byte((day >> 8 << 7) | (1 << weekday));
  bytes += low_byte(cm11::line_code(monitored_house_) << 4 | kFirmwareRevision);
  for (const std::uint16_t units : {addressed_, on_, dimmed_}) {
    bytes += low_byte(units);
    bytes += low_byte(units >> 8);
  }
  return bytes;
}

}  // namespace homewarden::emulator
