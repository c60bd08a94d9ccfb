#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/http/request_head.h"

namespace homewarden::http {

// What made a browser send a request.
enum class Cause {
  kOwn,       // a page of this house, an address that was typed, or a program
  kAllowed,   // a page of a foreign origin that is allowed to
  kUnproven,  // a browser that does not say and has not shown a page of this house before
  kForeign,   // a page of somebody else's
};

// `https`: how the request came, nothing when that is not known. `allowed`: origins as of
// origin_of().
Cause cause_of(const RequestHead& head, std::optional<bool> https,
               const std::vector<std::string>& allowed);

// Whether a program of this name shows people what others have written and follows its links, so
// that a request of its own says nothing of who wanted it. Browsers do, and mail and office
// programs, and messengers that look at the links in what is written. Scripts do not, even where
// their host calls itself Mozilla.
bool shows_foreign_content(std::string_view user_agent);

// Whether a browser is about to show the answer in a window of its own, where the page that caused
// the request cannot look.
bool is_navigation(const RequestHead& head);

}  // namespace homewarden::http
