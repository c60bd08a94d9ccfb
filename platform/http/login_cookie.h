#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace homewarden::http {

inline constexpr std::string_view kLoginCookie = "homewarden-login";

// A browser that has logged in, by its cookie.
struct KnownBrowser {
  std::array<std::uint8_t, 16> id{};
  long day = 0;  // that the cookie was signed on, since 1970
};

// Signs and reads the cookie that tells a browser that has logged in lately. It lets nobody in: its
// browser still has to log in, and is only not held up by the failures of others. It says which day
// it was signed on, so that an old one is worth nothing, and whoever has not the key cannot make
// one.
class LoginCookies {
 public:
  static constexpr long kDays = 30;  // that a cookie counts

  // `key`: 32 bytes nobody else knows. `passwords`: cookies that were signed with others are none.
  LoginCookies(std::string_view key, std::string_view passwords);

  // Nothing for a text that is no cookie of this key, and for one that is too old; also for one of
  // a day to come, beyond the next.
  std::optional<KnownBrowser> read(std::string_view cookie, long today) const;

  // A cookie's value, for a browser that has one already with the id it has.
  std::string sign(const std::optional<KnownBrowser>& browser, long today) const;

 private:
  std::string signature(std::string_view text) const;

  const std::string key_;
};

}  // namespace homewarden::http
