#include "platform/cm11/command.h"

namespace homewarden::cm11 {

namespace {

// In a row, for the address or for the function.
constexpr int kMaxUnanswered = 5;
// After a missing 55 the interface may still be transmitting, deaf to the computer.
constexpr int kMaxUnansweredAfterUnknown = 10;
constexpr int kMaxUnknown = 5;
constexpr int kMaxInterrupted = 20;
// No new attempt after this time, whatever keeps going wrong.
constexpr std::chrono::seconds kTimeLimit{60};

}  // namespace

Command::Command(Address address, int function, int dim_steps)
    : address_(address),
      function_(function),
      function_transmission_(function_transmission(address.house, function, dim_steps)) {}

std::string Command::name() const {
  const std::string house(1, static_cast<char>('A' + address_.house));
  return (needs_address() ? to_text(address_) : house) + " " + function_name(function_);
}

Transmission Command::next(Listeners& listeners, Milliseconds now) {
  if (!begun_) begun_ = now;
  step_ = Step::kFunction;
  if (!needs_address()) return function_transmission_;
  if (listeners.changed(address_.house)) addressed_ = false;
  if (!addressed_) {
    step_ = Step::kAddress;
    listeners.forget_changes(address_.house);
    return address_transmission(address_);
  }
  if (!listeners.others_than(address_)) return function_transmission_;
  step_ = Step::kDismissOthers;
  return function_transmission(address_.house, kHailAcknowledge, 0);
}

Command::Progress Command::ended(Outcome outcome, Milliseconds now) {
  switch (outcome) {
    case Outcome::kDone:
      if (step_ == Step::kFunction) return Progress::kSent;
      addressed_ = step_ == Step::kAddress;
      unanswered_ = 0;
      break;
    case Outcome::kUnanswered:
      if (++unanswered_ >= (unknown_ == 0 ? kMaxUnanswered : kMaxUnansweredAfterUnknown))
        return give_up("the interface does not answer");
      break;
    case Outcome::kInterrupted:
      if (++interrupted_ == kMaxInterrupted) return give_up("the interface is kept busy");
      unanswered_ = 0;
      break;
    case Outcome::kUnknown:
      if (unknown() == Progress::kGivenUp) return Progress::kGivenUp;
      break;
  }
  if (now - *begun_ > kTimeLimit) return give_up("the interface is kept busy");
  return Progress::kGoing;
}

Command::Progress Command::line_lost(bool unconfirmed) {
  addressed_ = false;
  return unconfirmed ? unknown() : Progress::kGoing;
}

Command::Progress Command::unknown() {
  addressed_ = false;
  const bool function = step_ == Step::kFunction;
  if (function) may_be_sent_ = true;
  const bool repeatable = !function || function_transmission_.repeatable;
  if (!repeatable || ++unknown_ == kMaxUnknown) return give_up("the interface did not confirm it");
  return Progress::kGoing;
}

Command::Progress Command::give_up(const char* reason) {
  reason_ = reason;
  return Progress::kGivenUp;
}

std::string Command::failure(const std::string& reason) const {
  return name() + (may_be_sent_ ? " may not have been sent, " : " could not be sent, ") + reason;
}

}  // namespace homewarden::cm11
