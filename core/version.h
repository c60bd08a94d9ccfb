#pragma once

namespace homewarden {

inline constexpr const char* kVersion = "1.0.0";  // major, minor, revision
// Where the person finds out more. Names under .example belong to nobody.
inline constexpr const char* kWebSite = "https://homewarden.example/";

}  // namespace homewarden
