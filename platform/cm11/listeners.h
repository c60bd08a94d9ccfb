#pragma once

#include <array>
#include <bitset>

#include "platform/cm11/codes.h"
#include "platform/cm11/upload.h"

namespace homewarden::cm11 {

// Which modules may act on the next function of their house. A module listens from its address on
// until the first address after a function, so what another controller addressed, or a command of
// ours that failed half-way, listens in to the next command unless something is done about it.
class Listeners {
 public:
  void heard(const Frame& frame);  // from another controller
  void lost_track();               // something was on the line and nobody knows what

  void sent_address(const Address& address);  // by us, for certain or perhaps
  void sent_function(int house);              // by us, for certain

  // Another controller has, or may have, been busy in this house, 0 to 15, since the last call of
  // forget_changes(). What it addressed listens all the same when that is forgotten.
  bool changed(int house) const { return at(house).changed; }
  void forget_changes(int house) { at(house).changed = false; }
  void all_changed();

  // Units of its house other than this one may listen.
  bool others_than(const Address& address) const;

 private:
  struct House {
    std::bitset<16> ours;
    std::bitset<16> theirs;
    bool changed = false;
  };
  const House& at(int house) const { return houses_[static_cast<std::size_t>(house)]; }
  House& at(int house) { return houses_[static_cast<std::size_t>(house)]; }

  std::array<House, 16> houses_;
};

}  // namespace homewarden::cm11
