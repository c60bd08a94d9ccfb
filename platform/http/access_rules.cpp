#include "platform/http/access_rules.h"

#include "platform/http/host_name.h"

namespace homewarden::http {
namespace {

// An origin has no path: whoever writes one might think that it counts.
bool has_path(const std::string& origin) {
  const std::size_t path = origin.find_first_of("/?#", origin.find("://") + 3);
  return path != std::string::npos && path + 1 != origin.size();
}

}  // namespace

AccessRules read_access(const WebAccess& access) {
  AccessRules rules;
  for (const auto& name : access.hosts) {
    (is_host_name(name) ? rules.hosts : rules.faults).push_back(name);
    // The dot of the root, which is_own_host() does not look at.
    if (is_host_name(name) && name.ends_with('.')) rules.hosts.back().pop_back();
  }
  for (const auto& entry : access.origins) {
    const auto origin = origin_of(entry);
    if (origin && !has_path(entry))
      rules.origins.push_back(*origin);
    else
      rules.faults.push_back(entry);
  }
  for (const auto& entry : access.proxies) {
    if (const auto network = parse_prefix(entry))
      rules.proxies.push_back(*network);
    else
      rules.faults.push_back(entry);
  }
  return rules;
}

}  // namespace homewarden::http
