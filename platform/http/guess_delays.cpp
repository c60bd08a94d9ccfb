#include "platform/http/guess_delays.h"

#include <algorithm>

namespace homewarden::http {

using std::chrono::milliseconds;

milliseconds GuessDelays::wait_of_own(const Address& from, milliseconds now) const {
  return own_.wait(from.bytes, now);
}

milliseconds GuessDelays::wait_of_others(const Address& from, milliseconds now) const {
  return std::max(networks_.wait(network_of(from).bytes, now),
                  sites_.wait(site_of(from).bytes, now));
}

void GuessDelays::wrong(const Address& from, milliseconds now) {
  own_.wrong(from.bytes, now);
  networks_.wrong(network_of(from).bytes, now);
  sites_.wrong(site_of(from).bytes, now);
}

}  // namespace homewarden::http
