#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/http/address.h"
#include "platform/http/guess_delays.h"
#include "platform/http/refusal.h"
#include "platform/web_api.h"

namespace homewarden::http {

// Whether the value of an Authorization header is meant as a token.
bool is_bearer(std::string_view authorization);

// A secret that nobody can guess, and the hash by which it is known.
NewToken make_token();

// Checks tokens and slows down whoever tries wrong ones.
class TokenCheck {
 public:
  explicit TokenCheck(std::vector<ApiToken> tokens) : tokens_(std::move(tokens)) {}

  // Those that count from now on.
  void set(std::vector<ApiToken> tokens) { tokens_ = std::move(tokens); }
  // Whether there is one of this hash.
  bool knows(std::string_view hash) const;

  // For an is_bearer(). A wrong one counts from this call on.
  std::variant<ApiToken, Refusal> check(std::string_view authorization, const Address& from,
                                        std::chrono::milliseconds now);

 private:
  const ApiToken* find(std::string_view hash) const;

  std::vector<ApiToken> tokens_;
  GuessDelays delays_;
};

// For a token that is not known, or not any more.
Refusal unknown_token();

}  // namespace homewarden::http
