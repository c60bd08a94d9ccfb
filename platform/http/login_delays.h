#pragma once

#include <chrono>
#include <cstddef>
#include <map>

#include "platform/http/address.h"

namespace homewarden::http {

// How long an address that tried wrong passwords must wait until the next one is looked at: after
// some free tries 1 second, doubled with every further wrong one up to a minute. An address is
// forgiven when it logs in or has not tried for an hour. Times are uptimes.
class LoginDelays {
 public:
  // No more than `remembered` addresses are kept in mind; the one that was quiet longest goes.
  explicit LoginDelays(int free_tries, std::size_t remembered = 1000);

  // Zero when the address may try now.
  std::chrono::milliseconds wait(const Address& address, std::chrono::milliseconds now) const;

  // A password was looked at, and was wrong or right. What came while wait() was not zero was not
  // looked at and does not count.
  void wrong(const Address& address, std::chrono::milliseconds now);
  void right(const Address& address) { tries_.erase(address); }

 private:
  struct Tries {
    int wrong = 0;
    std::chrono::milliseconds last{};
  };

  void forget_one();

  const int free_tries_;
  const std::size_t remembered_;
  std::map<Address, Tries> tries_;
};

}  // namespace homewarden::http
