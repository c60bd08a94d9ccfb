#pragma once

namespace homewarden {

// The nodes that every tree has, in their order.
inline constexpr const char* kHome = "Home";
inline constexpr const char* kEvents = "Events";
inline constexpr const char* kMacros = "Macros";
inline constexpr const char* kWebServer = "Web Server";
inline constexpr const char* kProfiles = "Profiles";
inline constexpr const char* kFixedNodes[] = {kHome, kEvents, kMacros, kWebServer, kProfiles};

}  // namespace homewarden
