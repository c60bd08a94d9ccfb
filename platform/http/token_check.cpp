#include "platform/http/token_check.h"

#include <algorithm>

#include "base/text.h"
#include "platform/http/keyed_hash.h"

namespace homewarden::http {

using std::chrono::milliseconds;

namespace {

constexpr std::string_view kScheme = "bearer ";
constexpr std::size_t kRandomBytes = 32;

}  // namespace

bool is_bearer(std::string_view authorization) {
  return equals_ignoring_case(authorization.substr(0, kScheme.size()), kScheme);
}

// So many random bytes need no slow hash: they cannot be tried out.
NewToken make_token() {
  const std::string secret = "hw_" + hex_of(random_bytes(kRandomBytes));
  return {secret, hex_of(hash_of(secret))};
}

Refusal unknown_token() {
  return {401, "This token is not known, or was revoked.", "WWW-Authenticate",
          R"(Bearer realm="Homewarden", error="invalid_token")"};
}

// All are compared, whichever it is.
const ApiToken* TokenCheck::find(std::string_view hash) const {
  const ApiToken* found = nullptr;
  for (const ApiToken& token : tokens_)
    if (same_in_constant_time(token.hash, hash)) found = &token;
  return found;
}

bool TokenCheck::knows(std::string_view hash) const {
  return find(hash) != nullptr;
}

// A right one is taken at once whoever tries wrong ones from the same address: unlike a password it
// is never the next of a few guesses.
std::variant<ApiToken, Refusal> TokenCheck::check(std::string_view authorization,
                                                  const Address& from, milliseconds now) {
  const std::string_view secret = trim_blanks(authorization.substr(kScheme.size()));
  if (const ApiToken* token = find(hex_of(hash_of(secret)))) return *token;
  const milliseconds wait =
      std::max(delays_.wait_of_own(from, now), delays_.wait_of_others(from, now));
  if (wait > milliseconds(0))
    return Refusal{429, "Too many wrong tokens; wait before the next one.", "Retry-After",
                   std::to_string(std::chrono::ceil<std::chrono::seconds>(wait).count())};
  delays_.wrong(from, now);
  return unknown_token();
}

}  // namespace homewarden::http
