#include "tools/emulator/upload_buffer.h"

#include <algorithm>
#include <utility>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

constexpr int kExtendedCode = 7;

// Amounts of Dim and Bright are uploaded in 1/210 of the full range.
constexpr int kUploadRange = 210;

char amount_byte(int steps) {
  const int amount = (std::min(steps, cm11::kDimSteps) * kUploadRange * 2 + cm11::kDimSteps) /
                     (2 * cm11::kDimSteps);
  return static_cast<char>(amount);
}

std::string upload_bytes(const Transmission& heard) {
  const int code = heard.function ? heard.code : cm11::line_code(heard.code - 1);
  std::string bytes(1, static_cast<char>(cm11::line_code(heard.house) << 4 | code));
  if (!heard.function) return bytes;
  if (heard.code == kX10Dim || heard.code == kX10Bright) bytes += amount_byte(heard.steps);
  if (heard.code == kExtendedCode && heard.extended.size() == 3) bytes += heard.extended.substr(1);
  return bytes;
}

}  // namespace

bool UploadBuffer::add(const Transmission& heard) {
  Item item{upload_bytes(heard), heard.function};
  if (size_ + item.bytes.size() > kDataBytes) return false;
  size_ += item.bytes.size();
  items_.push_back(std::move(item));
  return true;
}

std::string UploadBuffer::take() {
  std::string data;
  unsigned mask = 0;
  for (const auto& item : items_) {
    if (item.function) mask |= 1U << data.size();
    data += item.bytes;
  }
  items_.clear();
  size_ = 0;
  std::string upload(1, static_cast<char>(data.size() + 1));
  upload += static_cast<char>(mask);
  return upload + data;
}

}  // namespace homewarden::emulator
