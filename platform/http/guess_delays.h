#pragma once

#include <chrono>

#include "platform/http/address.h"
#include "platform/http/login_delays.h"

namespace homewarden::http {

// How long an address waits after wrong passwords or tokens: of its own, and of its network and
// site. Somebody who has a whole network of addresses, or many networks, does not get free tries
// with each. Times are uptimes.
class GuessDelays {
 public:
  // Zero when the address may try now.
  std::chrono::milliseconds wait_of_own(const Address& from, std::chrono::milliseconds now) const;
  std::chrono::milliseconds wait_of_others(const Address& from,
                                           std::chrono::milliseconds now) const;

  // See LoginDelays.
  void wrong(const Address& from, std::chrono::milliseconds now);
  void right(const Address& from) { own_.right(from.bytes); }

 private:
  LoginDelays own_{5};
  LoginDelays networks_{50};
  LoginDelays sites_{500};
};

}  // namespace homewarden::http
