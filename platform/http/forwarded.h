#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/http/address.h"

namespace homewarden::http {

// The headers in which proxies write down for whom they ask. Several of one name are one list. What
// they say counts only when a proxy that is trusted sent them.
struct ForwardedHeaders {
  std::string forwarded{};  // RFC 7239
  std::string x_for{};
  std::string x_proto{};
  bool any = false;  // one of these or another that only proxies send

  // Takes the header if it is one of them.
  void take(std::string_view name, std::string_view value);
};

// What the proxy itself has to say: the last entry of each list. Clients can put in any others.
struct Hop {
  // Nothing when the lists do not tell the address, cannot be read, or differ: a proxy that writes
  // one of them leaves the other as the client sent it.
  std::optional<Address> from{};
  // Whether the client came by https; nothing as above.
  std::optional<bool> https{};
  // There are entries before it: it passed on what another proxy, or the client itself, wrote.
  bool passed_on = false;
};

Hop last_hop(const ForwardedHeaders& headers);

}  // namespace homewarden::http
