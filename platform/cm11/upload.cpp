#include "platform/cm11/upload.h"

#include <algorithm>

#include "platform/cm11/codec.h"

namespace homewarden::cm11 {

namespace {

constexpr std::size_t kMaxCount = 9;  // the mask and 8 data bytes
constexpr int kExtendedCode = 7;

bool is_function(std::uint8_t mask, std::size_t index) {
  return (mask >> index & 1) != 0;
}

// How many argument bytes follow the function at `index`: an amount; or data and command of an
// extended code, which some interfaces report with the unit before them. Those three are told from
// two and an address by standing at the end, where an address without its function is rare.
std::size_t arguments_of(int function, std::uint8_t mask, std::size_t index, std::size_t size) {
  if (function == kX10Dim || function == kX10Bright) return 1;
  if (function != kExtendedCode) return 0;
  std::size_t end = index + 1;
  while (end < size && !is_function(mask, end)) ++end;
  return end == size && end - index - 1 == 3 ? 3 : 2;
}

}  // namespace

std::optional<std::vector<Frame>> parse_upload(std::uint8_t mask, const std::string& data) {
  if (data.size() < kMaxCount - 1 && mask >> data.size() != 0) return std::nullopt;
  std::vector<Frame> frames;
  for (std::size_t i = 0; i < data.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(data[i]);
    const int house = line_index(byte >> 4);
    if (!is_function(mask, i)) {
      frames.push_back({false, house, line_index(byte & 0x0F) + 1});
      continue;
    }
    const int function = byte & 0x0F;
    frames.push_back({true, house, function});
    for (auto left = arguments_of(function, mask, i, data.size()); left > 0; --left) {
      ++i;
      if (i == data.size() || is_function(mask, i)) return std::nullopt;
    }
  }
  return frames;
}

UploadReader::Progress UploadReader::take(std::uint8_t byte) {
  if (count_ == 0) {
    // The shortest upload is a mask and one byte.
    if (byte < 2 || byte > kMaxCount) return Progress::kIgnored;
    count_ = byte;
    return Progress::kMore;
  }
  bytes_ += static_cast<char>(byte);
  if (bytes_.size() < count_) return Progress::kMore;
  auto frames = parse_upload(static_cast<std::uint8_t>(bytes_[0]), bytes_.substr(1));
  if (!frames) return Progress::kDamaged;
  frames_ = std::move(*frames);
  return Progress::kComplete;
}

bool UploadReader::accept_count_of_all() {
  if (bytes_.size() < 2 || bytes_.size() + 1 != count_) return false;
  auto frames = parse_upload(static_cast<std::uint8_t>(bytes_[0]), bytes_.substr(1));
  if (!frames) return false;
  frames_ = std::move(*frames);
  return true;
}

bool UploadReader::has_neighbours_alike() const {
  const std::string all = static_cast<char>(count_) + bytes_;
  return std::ranges::adjacent_find(all) != all.end();
}

std::vector<Heard> AddressedUnits::take(const Frame& frame) {
  House& house = houses_[static_cast<std::size_t>(frame.house)];
  if (!frame.is_function) {
    if (house.closed) house = House{};
    const bool known = std::ranges::find(house.units, frame.value) != house.units.end();
    if (!known) house.units.push_back(frame.value);
    return {};
  }
  house.closed = true;
  if (is_house_wide(frame.value)) return {{frame.house, 0, frame.value}};
  std::vector<Heard> heard;
  for (const int unit : house.units) heard.push_back({frame.house, unit, frame.value});
  return heard;
}

bool AddressedUnits::is_open() const {
  return std::ranges::any_of(houses_,
                             [](const House& one) { return !one.closed && !one.units.empty(); });
}

void AddressedUnits::forget() {
  houses_ = {};
}

}  // namespace homewarden::cm11
