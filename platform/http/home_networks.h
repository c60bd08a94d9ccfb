#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "platform/http/visitor.h"

namespace homewarden::http {

// Which addresses are at home: private ones, those of the networks that this machine is itself on,
// and, when wanted, those that providers and VPNs share (100.64.0.0/10).
class HomeNetworks {
 public:
  // `on_link` asks the system for the networks of this machine.
  HomeNetworks(std::function<std::vector<NetworkPrefix>()> on_link, bool shared);

  // `now` is an uptime. The system is asked anew for an address that is not private, at most every
  // ten seconds: networks come and go while the server runs.
  bool contains(const Visitor& visitor, std::chrono::milliseconds now);

 private:
  std::function<std::vector<NetworkPrefix>()> on_link_;
  bool shared_;
  std::vector<NetworkPrefix> known_;
  std::optional<std::chrono::milliseconds> asked_;
};

}  // namespace homewarden::http
