#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/http/request_head.h"

namespace homewarden {

// Whether the value of a Host header is an address or a name that only this machine or its own
// network gives away. A page of somebody else's reaches this machine under a name of theirs that
// they let point here. Names are compared without regard to letter case.
bool is_own_host(std::string_view host, const std::vector<std::string>& own_names);

// Whether a web address, as in an Origin or Referer header, has the host and port of a Host header.
bool is_of_host(std::string_view address, std::string_view host);

// Why a request that switches something must be refused, as one line; nothing when it may be done.
std::optional<std::string> switch_fault(const RequestHead& head,
                                        const std::vector<std::string>& own_names);

// What this machine calls itself.
std::vector<std::string> machine_names();

}  // namespace homewarden
