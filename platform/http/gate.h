#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/clock.h"
#include "platform/http/cause.h"
#include "platform/http/home_networks.h"
#include "platform/http/https_policy.h"
#include "platform/http/log_in.h"
#include "platform/http/refusal.h"
#include "platform/http/request_head.h"
#include "platform/http/token_check.h"
#include "platform/http/visitor.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

struct Admission {
  Address from{};     // of the client, also behind a trusted proxy
  std::string page;   // decoded, without the leading slash
  std::string query;  // as it was sent
  std::optional<WebSwitch> switches{};
  std::optional<ApiRequest> call{};  // of a program, in place of a page, without its body
  std::string token{};               // the hash of the token it came with; "" for none
  bool shows_states = false;
  bool nameless = false;  // see WebServerControl::UnderForeignName()
  // That the answer has besides those of every answer.
  std::vector<std::pair<const char*, std::string>> headers{};
};

struct GateRules {
  // Whoever may log in; nothing when only those at home are admitted.
  std::optional<LogIn> log_in{};
  std::optional<HttpsPolicy> https{};  // nothing when TLS is not wanted
  HomeNetworks home{{}, false};
  std::vector<NetworkPrefix> proxies{};  // that are trusted
  std::vector<std::string> own_names{};  // of this machine
  std::vector<std::string> names{};      // further ones
  std::vector<std::string> origins{};    // allowed ones, as of origin_of()
  WebServerControl::SwitchTest switches{};
  WebServerControl::StateTest state_pages{};
  std::vector<ApiToken> tokens{};
};

// Decides which requests are answered at all, and with what. It remembers who tried wrong passwords
// and tokens, and who has logged in.
class Gate {
 public:
  explicit Gate(GateRules rules);

  // Those that are trusted.
  const std::vector<NetworkPrefix>& proxies() const { return rules_.proxies; }

  // The refusal says what to answer; a wrong password or token counts from this call on.
  std::variant<Admission, Refusal> check(const RequestHead& head, const Clock& clock);

  TokenCheck& tokens() { return tokens_; }

  // The headers by which a page of a foreign origin that is allowed to may read the answer; none
  // for others.
  using Headers = std::vector<std::pair<const char*, std::string>>;
  Headers cross_origin(const RequestHead& head) const;

 private:
  std::optional<Refusal> check_origin(const Visitor& visitor, std::chrono::milliseconds now);
  std::optional<Refusal> check_https(const RequestHead& head, const Visitor& visitor,
                                     std::chrono::milliseconds now);
  std::optional<Refusal> check_form(const RequestHead& head, bool is_call) const;
  std::variant<Admission, Refusal> check_page(const RequestHead& head, const Visitor& visitor,
                                              Admission admission) const;
  std::variant<Admission, Refusal> check_call(const RequestHead& head, const Visitor& visitor,
                                              Admission admission) const;
  std::optional<Refusal> check_switch(const RequestHead& head, bool own_host, Cause cause) const;
  std::optional<Refusal> check_state_page(const RequestHead& head, bool own_host, Cause cause,
                                          const StatePage& states, Admission& admission) const;
  bool has_own_host(const RequestHead& head) const;
  Refusal check_preflight(const RequestHead& head) const;
  Refusal under_foreign_name(const std::string& what) const;
  Refusal shown_to_foreign_page() const;

  GateRules rules_;
  std::vector<std::string> all_names_;
  TokenCheck tokens_;
};

}  // namespace homewarden::http
