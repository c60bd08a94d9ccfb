#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <variant>

#include "platform/clock.h"
#include "platform/http/credentials.h"
#include "platform/http/guess_delays.h"
#include "platform/http/login_cookie.h"
#include "platform/http/login_delays.h"
#include "platform/http/refusal.h"
#include "platform/http/request_head.h"
#include "platform/http/visitor.h"

namespace homewarden::http {

// Checks log-ins and slows guessing down, without holding up those who know the password: a browser
// that has logged in lately waits for its own failures alone, an address that has for those of its
// address, and not for those of its network.
class LogIn {
 public:
  LogIn(Credentials credentials, LoginCookies cookies)
      : credentials_(std::move(credentials)), cookies_(std::move(cookies)) {}

  // Admitted with a Set-Cookie value, "" when the browser needs no new cookie; or refused. A wrong
  // password counts from this call on.
  std::variant<std::string, Refusal> check(const RequestHead& head, const Visitor& visitor,
                                           const Clock& clock);

 private:
  bool is_known(const Address& from, std::chrono::milliseconds now) const;
  void remember(const Address& from, std::chrono::milliseconds now);

  const Credentials credentials_;
  const LoginCookies cookies_;
  GuessDelays delays_;
  // Whoever has got hold of a browser's cookie does not get free tries with it.
  LoginDelays browser_delays_{5};
  std::map<Address, std::chrono::milliseconds> known_;  // when each has logged in last
};

}  // namespace homewarden::http
