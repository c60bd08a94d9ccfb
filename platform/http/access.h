#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/http/request_head.h"

namespace homewarden::http {

// Whether the value of a Host header is an address or a name that only this machine or its own
// network gives away. A page of somebody else's reaches this machine under a name of theirs that
// they let point here. Names are compared without regard to letter case. False for what is no host.
bool is_own_host(std::string_view host, const std::vector<std::string>& own_names);

// Whether a web address, as in an Origin or Referer header, has the host and port of a Host header;
// a port that is left out is 80 or 443. False for any other kind of address, and for what is none.
bool is_of_host(std::string_view address, std::string_view host);

// Every page sets this cookie. Browsers keep it back (SameSite=Strict) when somebody else's page
// causes a request, so that it shows that a request comes from a page of this house or from an
// address that was typed. Its value is no secret.
inline constexpr std::string_view kHouseCookie = "homewarden";

// Whether a cookie of this name, with any value, is among them. `cookies`: pairs as in a Cookie
// header, separated by semicolons. Letter case counts.
bool has_cookie(std::string_view cookies, std::string_view name);

// Why a request that switches something must be refused, as one line; nothing when it may be done.
std::optional<std::string> switch_fault(const RequestHead& head,
                                        const std::vector<std::string>& own_names);

}  // namespace homewarden::http
