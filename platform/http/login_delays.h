#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>

namespace homewarden::http {

// Whoever tries: the bytes of an address, or of what tells a browser from others.
using Guesser = std::array<std::uint8_t, 16>;

// How long a guesser who tried wrong passwords must wait until the next one is looked at: after
// some free tries 1 second, doubled with every further wrong one up to a minute. Guessers are
// forgiven when they log in or have not tried for an hour. Times are uptimes.
class LoginDelays {
 public:
  // No more than `remembered` guessers are kept in mind; the one that was quiet longest goes.
  explicit LoginDelays(int free_tries, std::size_t remembered = 1000);

  // Zero when the guesser may try now.
  std::chrono::milliseconds wait(const Guesser& guesser, std::chrono::milliseconds now) const;

  // A password was looked at, and was wrong or right. What came while wait() was not zero was not
  // looked at and does not count.
  void wrong(const Guesser& guesser, std::chrono::milliseconds now);
  void right(const Guesser& guesser) { tries_.erase(guesser); }

 private:
  struct Tries {
    int wrong = 0;
    std::chrono::milliseconds last{};
  };

  void forget_one();

  const int free_tries_;
  const std::size_t remembered_;
  std::map<Guesser, Tries> tries_;
};

}  // namespace homewarden::http
