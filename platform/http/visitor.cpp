#include "platform/http/visitor.h"

#include <algorithm>

namespace homewarden::http {

Visitor visitor_of(const RequestHead& head, const std::vector<NetworkPrefix>& proxies) {
  const bool trusted = std::any_of(proxies.begin(), proxies.end(), [&](const NetworkPrefix& proxy) {
    return proxy.contains(head.from);
  });
  if (!trusted)
    return {head.from, head.from_here, head.https ? std::optional(true) : std::nullopt,
            head.forwarded.any, false};
  const Hop hop = last_hop(head.forwarded);
  return {hop.from.value_or(Address()), false, hop.https, hop.passed_on, true};
}

}  // namespace homewarden::http
