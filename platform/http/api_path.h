#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden::http {

// What follows kApiRoot in the path of a request, decoded once: "/house", "" for the root itself.
// Nothing for a path that lies elsewhere.
std::optional<std::string> api_path(std::string_view raw_path);

// Whether a path is one that programs ask for, of this version of the interface or another one:
// they are told of errors in a form of their own.
bool is_for_programs(std::string_view raw_path);

// A refusal as programs read it (application/problem+json, RFC 9457). `detail` is in the system
// code page.
std::string problem_json(unsigned status, std::string_view detail);

}  // namespace homewarden::http
