#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/http/credentials.h"
#include "platform/http/login_delays.h"
#include "platform/http/request_head.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

struct Refusal {
  unsigned status = 0;
  std::string reason;  // one line
  // One header more than every answer has; "" for none.
  std::string header{};
  std::string value{};
  std::string again{};       // see WebRefusal
  bool sets_cookie = false;  // as pages do
};

struct Admission {
  std::string page;  // decoded, without the leading slash
  std::optional<WebSwitch> switches{};
};

struct GateRules {
  bool log_in = false;  // otherwise only private addresses are admitted
  Credentials credentials{};
  std::vector<std::string> own_names{};
  WebServerControl::SwitchTest switches{};
};

// Decides which requests are answered at all. It remembers who tried wrong passwords.
class Gate {
 public:
  explicit Gate(GateRules rules) : rules_(std::move(rules)) {}

  // `now` is an uptime. The refusal says what to answer; a wrong password counts from this call on.
  std::variant<Admission, Refusal> check(const RequestHead& head, std::chrono::milliseconds now);

 private:
  std::optional<Refusal> check_form(const RequestHead& head) const;
  std::optional<Refusal> check_log_in(const RequestHead& head, std::chrono::milliseconds now);

  const GateRules rules_;
  LoginDelays delays_{5};
  // Somebody who has a whole network of addresses does not get free tries with each.
  LoginDelays network_delays_{50};
};

}  // namespace homewarden::http
