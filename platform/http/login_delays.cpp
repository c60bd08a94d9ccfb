#include "platform/http/login_delays.h"

#include <algorithm>

namespace homewarden::http {

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

constexpr seconds kLongest{60};
constexpr seconds kForgiven{3600};

}  // namespace

LoginDelays::LoginDelays(int free_tries, std::size_t remembered)
    : free_tries_(free_tries), remembered_(remembered) {}

milliseconds LoginDelays::wait(const Guesser& guesser, milliseconds now) const {
  const auto found = tries_.find(guesser);
  if (found == tries_.end() || found->second.wrong < free_tries_) return milliseconds(0);
  const int doublings = std::min(found->second.wrong - free_tries_, 6);
  const milliseconds delay = std::min(seconds(1 << doublings), kLongest);
  return std::max(found->second.last + delay - now, milliseconds(0));
}

void LoginDelays::wrong(const Guesser& guesser, milliseconds now) {
  auto found = tries_.find(guesser);
  if (found == tries_.end()) {
    if (tries_.size() >= remembered_) forget_one();
    found = tries_.emplace(guesser, Tries{}).first;
  }
  Tries& tries = found->second;
  if (now - tries.last > kForgiven) tries.wrong = 0;
  tries.wrong = std::min(tries.wrong + 1, free_tries_ + 6);
  tries.last = now;
}

void LoginDelays::forget_one() {
  const auto quietest =
      std::min_element(tries_.begin(), tries_.end(),
                       [](const auto& a, const auto& b) { return a.second.last < b.second.last; });
  if (quietest != tries_.end()) tries_.erase(quietest);
}

}  // namespace homewarden::http
