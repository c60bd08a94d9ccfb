#pragma once

#include <string_view>

namespace homewarden {

// The description of the interface for programs (OpenAPI 3.1), api/openapi.json as it was when this
// was built.
std::string_view openapi_text();

}  // namespace homewarden
