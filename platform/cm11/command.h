#pragma once

#include <optional>
#include <string>

#include "platform/cm11/handshake.h"

namespace homewarden::cm11 {

// One command on its way to the power line: its address, then its function, each tried again within
// bounds when something goes wrong.
// - What was not transmitted is tried again as it is.
// - An address, On or Off of which nobody knows whether it went out is sent again, from the address
//   on: a module that gets it twice is none the worse.
// - Dim and Bright change a module each time they arrive. When nobody knows whether one went out,
//   it is given up.
// - When another controller may have addressed units of the same house since the address went out,
//   the address goes out again before the function.
// - When other units of the house may still listen, because nothing but an address of theirs was
//   heard, a function that no module acts upon ends their turn, and the address goes out again.
class Command {
 public:
  using Milliseconds = std::chrono::milliseconds;

  enum class Progress { kGoing, kSent, kGivenUp };

  // To one unit; or with unit 0 a house-wide function, which needs no address.
  Command(Address address, int function, int dim_steps);

  // "A3 On"; "A All Lights On" for a house-wide function.
  std::string name() const;

  // What to transmit now. Its outcome is to be told to ended() or line_lost() before the next call.
  Transmission next(Listeners& listeners, Milliseconds now);

  // kGoing: next() says what is tried now. No new attempt begins a minute after the first one.
  Progress ended(Outcome outcome, Milliseconds now);

  // The line went dead; `unconfirmed` when the transmission under way may have gone out.
  Progress line_lost(bool unconfirmed);

  // What a person is told when the command is given up, for `reason` or for the reason it has
  // itself: "A3 On could not be sent, the interface does not answer".
  std::string failure(const std::string& reason) const;
  // "" until it has given itself up.
  const std::string& reason() const { return reason_; }

 private:
  enum class Step { kAddress, kDismissOthers, kFunction };

  bool needs_address() const { return address_.unit != 0; }
  Progress unknown();
  Progress give_up(const char* reason);

  Address address_;
  int function_;
  Transmission function_transmission_;
  bool addressed_ = false;  // the address is known to have gone out
  Step step_ = Step::kAddress;
  bool may_be_sent_ = false;  // a function went out, perhaps
  int unanswered_ = 0;
  int interrupted_ = 0;
  int unknown_ = 0;
  std::optional<Milliseconds> begun_;
  std::string reason_;
};

}  // namespace homewarden::cm11
