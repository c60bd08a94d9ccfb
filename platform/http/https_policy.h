#pragma once

#include <optional>
#include <string>

#include "platform/http/refusal.h"
#include "platform/http/request_head.h"
#include "platform/web_https.h"

namespace homewarden::http {

// What becomes of requests without TLS where it is wanted.
struct HttpsPolicy {
  std::string port;  // of TLS; "" while it cannot be had, for which nobody at home has to suffer
  WebHttps::Plain plain = WebHttps::Plain::kAtHome;
  bool plain_password = false;

  // What decides, beside the head of a request without TLS.
  struct Asker {
    bool at_home = false;   // for certain, as of HomeNetworks and without a proxy that is not known
    bool logs_in = false;   // a password or token would be asked for, or is there already
    bool own_host = false;  // its Host is the house's, so that it may be sent back there
  };

  // Where to go instead, or that nothing is taken that way; nothing when it may be answered.
  std::optional<Refusal> check(const RequestHead& head, const Asker& asker) const;

 private:
  Refusal sent_on(const RequestHead& head, bool own_host) const;
};

}  // namespace homewarden::http
