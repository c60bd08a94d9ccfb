#include "platform/cm11/listeners.h"

namespace homewarden::cm11 {

namespace {

std::size_t bit(int unit) {
  return static_cast<std::size_t>(unit - 1);
}

}  // namespace

void Listeners::heard(const Frame& frame) {
  House& house = at(frame.house);
  house.changed = true;
  // A function ends the turn of what was addressed before it. Ours stays: an upload tells nothing
  // of the order between their frames and ours.
  if (frame.is_function)
    house.theirs.reset();
  else
    house.theirs.set(bit(frame.value));
}

void Listeners::lost_track() {
  for (House& house : houses_) house.theirs.set();
  all_changed();
}

void Listeners::all_changed() {
  for (House& house : houses_) house.changed = true;
}

void Listeners::sent_address(const Address& address) {
  at(address.house).ours.set(bit(address.unit));
}

void Listeners::sent_function(int house) {
  at(house).ours.reset();
  at(house).theirs.reset();
}

bool Listeners::others_than(const Address& address) const {
  auto listening = at(address.house).ours | at(address.house).theirs;
  return listening.reset(bit(address.unit)).any();
}

}  // namespace homewarden::cm11
