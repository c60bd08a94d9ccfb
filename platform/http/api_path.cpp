#include "platform/http/api_path.h"

#include <microhttpd.h>

#include "base/code_page.h"
#include "base/text.h"
#include "platform/web_api.h"

namespace homewarden::http {
namespace {

bool lies_below(std::string_view path, std::string_view root) {
  return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
}

// Control characters, which no reason has, become blanks.
std::string quoted(std::string_view text) {
  std::string json = "\"";
  for (const char letter : text) {
    const bool is_control = static_cast<unsigned char>(letter) < ' ';
    if (letter == '"' || letter == '\\') json.push_back('\\');
    json.push_back(is_control ? ' ' : letter);
  }
  return json + "\"";
}

}  // namespace

std::optional<std::string> api_path(std::string_view raw_path) {
  const std::string path = percent_decoded(raw_path);
  if (!lies_below(path, kApiRoot)) return std::nullopt;
  return path.substr(kApiRoot.size());
}

bool is_for_programs(std::string_view raw_path) {
  return lies_below(percent_decoded(raw_path), "/api");
}

std::string problem_json(unsigned status, std::string_view detail) {
  const char* title = MHD_get_reason_phrase_for(status);
  return "{\"title\":" + quoted(title) + ",\"status\":" + std::to_string(status) +
         ",\"detail\":" + quoted(to_utf8(detail)) + "}\n";
}

}  // namespace homewarden::http
