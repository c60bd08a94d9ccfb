#pragma once

#include <string>

#include "platform/web_server_control.h"

namespace homewarden {

// What a browser shows in place of the page that it asked for, in the style of the house's pages:
// the reason, a link to the home page, and one that asks again when the refusal offers that. What
// belongs to ten-foot pages is refused on one that a remote control can use.
std::string refusal_page(const WebRefusal& refusal);

}  // namespace homewarden
