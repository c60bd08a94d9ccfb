#include "platform/http/request_head.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace homewarden::http {

void set_target(RequestHead& head, std::string target) {
  const std::size_t scheme = target.starts_with('/') ? std::string::npos : target.find("://");
  const std::string name = to_lower(target.substr(0, scheme));
  if (scheme == std::string::npos || (name != "http" && name != "https")) {
    head.uri = std::move(target);
    return;
  }
  const std::size_t host = scheme + 3;
  const std::size_t path = std::min(target.find_first_of("/?", host), target.size());
  // A request that lacks the header, or has it twice, stays malformed.
  if (head.host || !head.needs_host) head.host = target.substr(host, path - host);
  head.is_absolute = true;
  head.uri = target.substr(path);
  if (!head.uri.starts_with('/')) head.uri.insert(0, "/");
}

}  // namespace homewarden::http
