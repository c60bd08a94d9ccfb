#pragma once

#include <optional>
#include <vector>

#include "platform/http/address.h"
#include "platform/http/request_head.h"

namespace homewarden::http {

// Who a request is from.
struct Visitor {
  // Nobody's, the unspecified address, for whom a trusted proxy does not tell.
  Address from{};
  bool from_here = false;  // of this machine, whatever the address
  // Whether the client came by https, to this machine or to a trusted proxy; nothing when nobody
  // tells: in front of plain HTTP there may be a proxy that is not known.
  std::optional<bool> https{};
  // By way of a proxy that is not trusted: `from` is that of the proxy, or may be, where a trusted
  // one passed on what it had been told.
  bool by_unknown_proxy = false;
  bool by_trusted_proxy = false;
};

// For a request whose connection comes from one of the proxies, what that proxy says counts, and
// nothing else: a request of which it says nothing is nobody's. From others nothing of the kind is
// believed.
Visitor visitor_of(const RequestHead& head, const std::vector<NetworkPrefix>& proxies);

}  // namespace homewarden::http
