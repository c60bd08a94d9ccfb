#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace homewarden::http {

// Whether the value of a Host header is an address or a name that only this machine or its own
// network gives away: a name without a dot, one of a domain of homes (.local, .localdomain, .lan,
// .home, .home.arpa, .internal, .box), or one of `own_names`. A page of somebody else's reaches
// this machine under a name of theirs that they let point here. Letter case does not count. False
// for what is no host.
bool is_own_host(std::string_view host, const std::vector<std::string>& own_names);

// The host of a Host header without its port, lower-case, an IPv6 address in its brackets; nothing
// for what is no host.
std::optional<std::string> host_without_port(std::string_view host);

// Whether a text is the name of a host, without a port.
bool is_host_name(std::string_view text);

// Scheme, host and port of a web address, the port always written out: "https://a.example:443" of
// "HTTPS://A.example/x". Nothing for any other kind of address, and for what is none.
std::optional<std::string> origin_of(std::string_view address);

// Whether a web address, as in an Origin or Referer header, has the host and port of a Host header.
// `https` tells how the request came; when that is not known either will do. A port that is left
// out is that of the scheme. False for what is no web address.
bool is_of_host(std::string_view address, std::string_view host, std::optional<bool> https);

}  // namespace homewarden::http
