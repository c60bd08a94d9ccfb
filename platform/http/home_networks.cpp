#include "platform/http/home_networks.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {
namespace {

constexpr std::chrono::seconds kFresh{10};
// A mask that is too wide by mistake must not let half of the internet in.
constexpr unsigned kWidestV4 = 96 + 8;
constexpr unsigned kWidestV6 = 32;

bool is_mapped(const Address& address) {
  return NetworkPrefix{*parse_address("0.0.0.0"), 96}.contains(address);
}

}  // namespace

HomeNetworks::HomeNetworks(std::function<std::vector<NetworkPrefix>()> on_link, bool shared)
    : on_link_(std::move(on_link)), shared_(shared) {}

bool HomeNetworks::contains(const Visitor& visitor, std::chrono::milliseconds now) {
  if (visitor.from_here || is_private(visitor.from)) return true;
  if (shared_ && parse_prefix("100.64.0.0/10")->contains(visitor.from)) return true;
  if (visitor.from == Address() || !on_link_) return false;
  if (!asked_ || now - *asked_ > kFresh) {
    known_ = on_link_();
    std::erase_if(known_, [](const NetworkPrefix& network) {
      return network.bits < (is_mapped(network.address) ? kWidestV4 : kWidestV6);
    });
    asked_ = now;
  }
  return std::any_of(known_.begin(), known_.end(),
                     [&](const NetworkPrefix& network) { return network.contains(visitor.from); });
}

}  // namespace homewarden::http
