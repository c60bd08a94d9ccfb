#include "platform/http/cookies.h"

#include <algorithm>

#include "base/text.h"

namespace homewarden::http {

std::optional<std::string_view> cookie(std::string_view cookies, std::string_view name) {
  while (!cookies.empty()) {
    const std::size_t end = std::min(cookies.find(';'), cookies.size());
    const std::string_view pair = cookies.substr(0, end);
    const std::size_t equals = pair.find('=');
    if (equals != std::string_view::npos && trim_blanks(pair.substr(0, equals)) == name)
      return trim_blanks(pair.substr(equals + 1));
    cookies.remove_prefix(std::min(end + 1, cookies.size()));
  }
  return std::nullopt;
}

}  // namespace homewarden::http
