#pragma once

#include <string>
#include <vector>

#include "platform/http/address.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

// What a person wrote down, as it is compared.
struct AccessRules {
  std::vector<std::string> hosts{};
  std::vector<std::string> origins{};  // as of origin_of()
  std::vector<NetworkPrefix> proxies{};
  std::vector<std::string> faults{};  // entries that are none of what they should be
};

AccessRules read_access(const WebAccess& access);

}  // namespace homewarden::http
