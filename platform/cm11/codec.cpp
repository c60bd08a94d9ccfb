#include "platform/cm11/codec.h"

#include <bit>
#include <cmath>

namespace homewarden::cm11 {

namespace {

constexpr std::uint8_t kHeader = 0x04;          // always set
constexpr std::uint8_t kFunctionHeader = 0x02;  // a function and not an address
constexpr int kDimShift = 3;
constexpr int kOneDimStep = 1 << kDimShift;

std::uint8_t byte_at(std::string_view bytes, std::size_t index) {
  return static_cast<std::uint8_t>(bytes[index]);
}

std::uint8_t high_nibble(int value) {
  return static_cast<std::uint8_t>((value & 0x0F) << 4);
}

}  // namespace

std::string Transmission::bytes() const {
  return {static_cast<char>(header), static_cast<char>(code)};
}

std::uint8_t Transmission::checksum() const {
  return checksum_of(bytes());
}

bool Transmission::is_function() const {
  return (header & kFunctionHeader) != 0;
}

Address Transmission::address() const {
  return {line_index(code >> 4), line_index(code & 0x0F) + 1};
}

Transmission address_transmission(const Address& address) {
  const int code = high_nibble(line_code(address.house)) | line_code(address.unit - 1);
  Transmission transmission{kHeader, static_cast<std::uint8_t>(code), 0, true};
  // The checksum of G5 equals ready, and a late ready cannot be told from it. An amount of dimming
  // means nothing with an address and makes another checksum.
  if (transmission.checksum() == kReady) transmission.header |= kOneDimStep;
  return transmission;
}

Transmission function_transmission(int house, int function, int dim_steps) {
  const int header = kHeader | kFunctionHeader | dim_steps << kDimShift;
  const int code = high_nibble(line_code(house)) | (function & 0x0F);
  const bool steps_add_up = function == kX10Dim || function == kX10Bright;
  return {static_cast<std::uint8_t>(header), static_cast<std::uint8_t>(code), dim_steps,
          !steps_add_up};
}

bool is_house_wide(int function) {
  constexpr int kHailRequest = 8;
  return function == kX10AllUnitsOff || function == kX10AllLightsOn ||
         function == kX10AllLightsOff || function == kHailRequest || function == kHailAcknowledge;
}

std::string function_name(int function) {
  static constexpr std::array kNames = {"All Units Off", "All Lights On", "On", "Off", "Dim",
                                        "Bright",        "All Lights Off"};
  if (function >= 0 && function < static_cast<int>(kNames.size()))
    return kNames[static_cast<std::size_t>(function)];
  return "function " + std::to_string(function);
}

int dim_steps_from_percent(double percent) {
  if (!(percent > 0)) return 0;  // also when it is not a number
  if (percent >= 100) return kDimSteps;
  return static_cast<int>(std::lround(percent * kDimSteps / 100));
}

std::uint8_t checksum_of(std::string_view bytes) {
  unsigned sum = 0;
  for (const char byte : bytes) sum += static_cast<unsigned char>(byte);
  return static_cast<std::uint8_t>(sum & 0xFF);
}

std::string clock_bytes(const LocalTime& now) {
  constexpr int kMonitoredHouse = line_code(0);
  const int day_high_bit = now.year_day > 0xFF ? 0x80 : 0;
  const std::array<int, 7> values = {kClockHeader,
                                     now.second % 60,  // a leap second is not in its range
                                     now.minute + 60 * (now.hour % 2),
                                     now.hour / 2,
                                     now.year_day & 0xFF,
                                     day_high_bit | 1 << now.weekday,
                                     high_nibble(kMonitoredHouse)};
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(value);
  return bytes;
}

std::uint8_t clock_checksum(std::string_view bytes) {
  return checksum_of(bytes.substr(1));
}

bool is_plausible_status(std::string_view bytes) {
  if (bytes.size() != kStatusLength) return false;
  const int day_high_bit = byte_at(bytes, 6) >> 7;
  const int year_day = day_high_bit << 8 | byte_at(bytes, 5);
  const unsigned weekdays = byte_at(bytes, 6) & 0x7F;
  return byte_at(bytes, 2) < 60 && byte_at(bytes, 3) < 120 && byte_at(bytes, 4) < 12 &&
         year_day < 366 && std::has_single_bit(weekdays);
}

}  // namespace homewarden::cm11
