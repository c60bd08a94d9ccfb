#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/cm11/codes.h"

namespace homewarden::cm11 {

// One frame that the interface heard on the power line.
struct Frame {
  bool is_function = false;
  int house = 0;  // 0 (A) to 15 (P)
  int value = 0;  // the unit, 1 to 16, or the function code

  bool operator==(const Frame&) const = default;
};

// The frames of one upload: its mask and the data bytes. Nothing when the bytes cannot have been
// sent like that: mask bits without a byte, an argument marked as a function, an argument missing.
std::optional<std::vector<Frame>> parse_upload(std::uint8_t mask, const std::string& data);

// Takes the bytes of an upload (docs/cm11-protocol.md, "Receiving") one by one.
class UploadReader {
 public:
  enum class Progress {
    kIgnored,   // not a count: noise, or a poll that crossed with its answer
    kMore,      // bytes are still to come
    kComplete,  // frames() are those of the upload
    kDamaged,   // as many bytes as announced, but they make no sense
  };

  // After kComplete or kDamaged it must not be called any more.
  Progress take(std::uint8_t byte);

  // No more bytes came. True, and frames() are those of the upload, when just one byte is missing
  // and those that came make sense without it: the count of some revisions includes itself.
  bool accept_count_of_all();

  // False until a byte has come that can be a count, 2 to 9.
  bool has_begun() const { return count_ != 0; }
  // Whether one of the bytes may have been doubled on the line.
  bool has_neighbours_alike() const;
  const std::vector<Frame>& frames() const { return frames_; }

 private:
  std::size_t count_ = 0;
  std::string bytes_;  // the mask and the data
  std::vector<Frame> frames_;
};

// A command from the power line and one unit it is for; `unit` is 0 for a command to the whole
// house.
struct Heard {
  int house = 0;
  int unit = 0;
  int function = 0;

  bool operator==(const Heard&) const = default;
};

// Which units a function from the power line is for: those of its house addressed since
// the last function, whichever uploads they came in. Another function right after it is for the
// same units; the first address after a function starts anew.
class AddressedUnits {
 public:
  // One for each unit that a function is for, in the order in which they were addressed, or one
  // with unit 0 for a function to the whole house. None for an address, nor for a function before
  // which none was heard.
  std::vector<Heard> take(const Frame& frame);

  // Whether an address has come that no function has followed yet.
  bool is_open() const;

  // What was heard is no longer certain; functions are for nobody until addresses come again.
  void forget();

 private:
  struct House {
    std::vector<int> units;
    bool closed = false;  // a function has come since the last address
  };
  std::array<House, 16> houses_;
};

}  // namespace homewarden::cm11
