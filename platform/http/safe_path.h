#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden::http {

// The file that the path of a request names, relative to the document folder and decoded: "a/b.gif"
// for "/a/b%2egif", "" for "/". Nothing for a path that must not be looked for: one that leaves the
// folder, names a hidden file or the file with the passwords, or is written in a way that some
// system reads as one of these.
std::optional<std::string> safe_path(std::string_view raw_path);

}  // namespace homewarden::http
