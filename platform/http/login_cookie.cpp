#include "platform/http/login_cookie.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "platform/http/keyed_hash.h"

namespace homewarden::http {
namespace {

constexpr std::size_t kIdDigits = 32;
constexpr std::size_t kSignatureDigits = 64;

}  // namespace

LoginCookies::LoginCookies(std::string_view key, std::string_view passwords)
    : key_(keyed_hash(key, passwords)) {}

std::string LoginCookies::signature(std::string_view text) const {
  return hex_of(keyed_hash(key_, text));
}

// "<day>.<id>.<signature of both>"
std::string LoginCookies::sign(const std::optional<KnownBrowser>& browser, long today) const {
  std::string id;
  if (browser)
    id.assign(browser->id.begin(), browser->id.end());
  else
    id = random_bytes(kIdDigits / 2);
  const std::string text = std::to_string(today) + "." + hex_of(id);
  return text + "." + signature(text);
}

std::optional<KnownBrowser> LoginCookies::read(std::string_view cookie, long today) const {
  constexpr std::size_t kBehindDay = 1 + kIdDigits + 1 + kSignatureDigits;
  if (cookie.size() <= kBehindDay || cookie.size() > kBehindDay + 8) return std::nullopt;
  const std::string_view text = cookie.substr(0, cookie.size() - kSignatureDigits - 1);
  if (!same_in_constant_time(cookie.substr(text.size()), "." + signature(text)))
    return std::nullopt;

  KnownBrowser browser;
  const std::string_view day = text.substr(0, text.size() - kIdDigits - 1);
  std::from_chars(day.data(), day.data() + day.size(), browser.day);
  if (today - browser.day > kDays || browser.day > today + 1) return std::nullopt;
  const std::string_view id = text.substr(text.size() - kIdDigits);
  for (std::size_t i = 0; i < browser.id.size(); ++i)
    browser.id.at(i) =
        static_cast<std::uint8_t>(hex_digit(id[2 * i]) * 16 + hex_digit(id[2 * i + 1]));
  return browser;
}

}  // namespace homewarden::http
