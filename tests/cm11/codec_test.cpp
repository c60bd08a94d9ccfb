#include "platform/cm11/codec.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/cm11/upload.h"

namespace homewarden::cm11 {

namespace {

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values) text += static_cast<char>(value);
  return text;
}

}  // namespace

// Catches: house and unit codes mixed up, which would switch a neighbour's lamp; the dim amount in
// the wrong bits, a wrong sum; an address whose checksum cannot be told from a ready that comes
// late, and a change of any other.
TEST(Codec, TransmissionsAreThoseOfTheProtocol) {
  constexpr int kLine[] = {0x6, 0xE, 0x2, 0xA, 0x1, 0x9, 0x5, 0xD,
                           0x7, 0xF, 0x3, 0xB, 0x0, 0x8, 0x4, 0xC};
  for (int house = 0; house < 16; ++house) {
    for (int unit = 1; unit <= 16; ++unit) {
      const auto transmission = address_transmission({house, unit});
      EXPECT_EQ(transmission.code, kLine[house] << 4 | kLine[unit - 1]);
      EXPECT_NE(transmission.checksum(), kReady);
      EXPECT_EQ(transmission.header == 0x04, to_text({house, unit}) != "G5");
      EXPECT_EQ(transmission.address(), (Address{house, unit}));
    }
  }
  EXPECT_EQ(address_transmission({0, 1}).checksum(), 0x6A);
  EXPECT_EQ(function_transmission(0, kX10Dim, 16).bytes(), bytes({0x86, 0x64}));
  EXPECT_EQ(function_transmission(0, kX10Dim, 16).checksum(), 0xEA);
  EXPECT_EQ(function_transmission(3, kX10Dim, 22).bytes(), bytes({0xB6, 0xA4}));
}

// Catches: truncation instead of rounding, a step count beyond the header's range.
TEST(Codec, PercentagesAreRoundedToSteps) {
  const std::pair<double, int> cases[] = {{0, 0},     {2, 0},   {2.3, 1},      {4.5, 1},  {7, 2},
                                          {50, 11},   {97, 21}, {98, 22},      {100, 22}, {250, 22},
                                          {-1000, 0}, {NAN, 0}, {INFINITY, 22}};
  for (const auto& [percent, steps] : cases)
    EXPECT_EQ(dim_steps_from_percent(percent), steps) << percent;
}

// Catches: the hour split wrongly, the ninth bit of the day lost, the weekday as a number.
TEST(Codec, ClockBytes) {
  LocalTime noon;
  noon.hour = 13;
  noon.minute = 5;
  noon.second = 59;
  noon.year_day = 300;
  noon.weekday = 6;
  EXPECT_EQ(clock_bytes(noon), bytes({0x9B, 59, 65, 6, 300 - 256, 0x80 | 0x40, 0x60}));
  EXPECT_EQ(clock_checksum(clock_bytes(noon)), (59 + 65 + 6 + 44 + 0xC0 + 0x60) & 0xFF);
  noon.second = 60;
  EXPECT_EQ(clock_bytes(noon)[1], 0) << "a leap second is out of range";
}

// Catches: a modem or a mouse taken for an interface, an interface refused on its last day.
TEST(Codec, OnlyAnInterfaceHasAPlausibleStatus) {
  const std::string status =
      bytes({0xFF, 0xFF, 59, 119, 11, 365 - 256, 0x80 | 0x01, 0x68, 1, 2, 3, 4, 5, 6});
  EXPECT_TRUE(is_plausible_status(status));
  EXPECT_FALSE(is_plausible_status(status.substr(1)));
  const std::pair<std::size_t, int> impossible[] = {{2, 60},        {3, 120},  {4, 12},
                                                    {5, 366 - 256}, {6, 0x80}, {6, 0x83}};
  for (const auto& [index, value] : impossible) {
    std::string changed = status;
    changed[index] = static_cast<char>(value);
    EXPECT_FALSE(is_plausible_status(changed)) << index << " " << value;
  }
  EXPECT_FALSE(is_plausible_status(std::string(14, '\0')));
}

// Catches: an argument taken for an address, the mask read from the wrong end.
TEST(Upload, MaskAndArguments) {
  const auto bright = parse_upload(0x04, bytes({0xE9, 0xE5, 0xE5, 0x58}));
  ASSERT_TRUE(bright);
  EXPECT_EQ(*bright, (std::vector<Frame>{{false, 1, 6}, {false, 1, 7}, {true, 1, kX10Bright}}));
  const auto extended = parse_upload(0x12, bytes({0x66, 0x67, 0x22, 0x66, 0x62}));
  ASSERT_TRUE(extended);
  EXPECT_EQ(*extended, (std::vector<Frame>{{false, 0, 1}, {true, 0, 7}, {true, 0, kX10On}}));
  // Three at the end: unit, data, command. Any other number behind it are addresses.
  const auto three = parse_upload(0x02, bytes({0x66, 0x67, 0x06, 0x3F, 0x31}));
  ASSERT_TRUE(three);
  EXPECT_EQ(*three, (std::vector<Frame>{{false, 0, 1}, {true, 0, 7}})) << "a phantom unit";
  const auto between = parse_upload(0x12, bytes({0x66, 0x67, 0x3F, 0x31, 0x67, 0x06, 0x3F, 0x31}));
  ASSERT_TRUE(between);
  EXPECT_EQ(between->size(), 3U);
  const auto four = parse_upload(0x01, bytes({0x67, 0x3F, 0x31, 0x66, 0x6E}));
  ASSERT_TRUE(four);
  EXPECT_EQ(*four, (std::vector<Frame>{{true, 0, 7}, {false, 0, 1}, {false, 0, 2}}));
  EXPECT_TRUE(parse_upload(0x11, bytes({0x67, 0x06, 0x3F, 0x31, 0x62}))) << "not at the end";
  EXPECT_FALSE(parse_upload(0x02, bytes({0x66, 0x67, 0x06}))) << "cut off";
  EXPECT_FALSE(parse_upload(0x04, bytes({0x66, 0x62}))) << "a mask bit without a byte";
  EXPECT_FALSE(parse_upload(0x02, bytes({0x66, 0x64}))) << "an amount that is missing";
  EXPECT_FALSE(parse_upload(0x06, bytes({0x66, 0x64, 0x58}))) << "an amount that is a function";
  EXPECT_TRUE(parse_upload(0xAA, bytes({0x66, 0x62, 0x66, 0x62, 0x66, 0x62, 0x66, 0x62})));
}

// Catches: units forgotten after a function or an upload, units of two houses mixed, a unit that is
// told twice.
TEST(Upload, FunctionsAreForTheUnitsAddressedBefore) {
  AddressedUnits units;
  const auto unit = [&](int house, int number) { return units.take({false, house, number}); };
  const auto function = [&](int house, int code) { return units.take({true, house, code}); };
  using List = std::vector<Heard>;
  EXPECT_EQ(function(0, kX10On), List{}) << "nobody has been addressed";
  unit(0, 3);
  unit(1, 9);
  unit(0, 5);
  unit(0, 3);
  EXPECT_EQ(function(0, kX10On), (List{{0, 3, kX10On}, {0, 5, kX10On}}));
  EXPECT_EQ(function(0, kX10Dim), (List{{0, 3, kX10Dim}, {0, 5, kX10Dim}}));
  EXPECT_EQ(function(1, kX10Off), (List{{1, 9, kX10Off}}));
  unit(0, 7);
  EXPECT_EQ(function(0, kX10AllUnitsOff), (List{{0, 0, kX10AllUnitsOff}}));
  EXPECT_EQ(function(0, kX10On), (List{{0, 7, kX10On}}));
  units.forget();
  EXPECT_EQ(function(0, kX10On), List{});
}

}  // namespace homewarden::cm11
