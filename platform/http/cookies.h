#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden::http {

// Every page sets this cookie. Browsers keep it back (SameSite=Strict) when somebody else's page
// causes a request, so that it shows that a request comes from a page of this house or from an
// address that was typed. Its value is no secret.
inline constexpr std::string_view kHouseCookie = "homewarden";

// What sets it, for a year.
inline constexpr const char* kSetHouseCookie =
    "homewarden=1; Path=/; Max-Age=31536000; SameSite=Strict; HttpOnly";

// The value of the first cookie of this name; nothing when there is none. `cookies`: pairs as in a
// Cookie header, separated by semicolons. Letter case counts. Points into `cookies`.
std::optional<std::string_view> cookie(std::string_view cookies, std::string_view name);

}  // namespace homewarden::http
