#include "platform/cm11/port_search.h"

#include <algorithm>
#include <utility>

namespace homewarden::cm11 {

namespace {

bool holds(const std::vector<int>& ports, int port) {
  return std::ranges::find(ports, port) != ports.end();
}

}  // namespace

PortSearch::PortSearch(int lost_port, std::vector<int> present)
    : lost_port_(lost_port), known_(std::move(present)) {}

std::vector<int> PortSearch::candidates(const std::vector<int>& present) {
  std::erase_if(known_, [&](int port) { return !holds(present, port); });
  std::vector<int> ports;
  if (holds(present, lost_port_)) ports.push_back(lost_port_);
  for (const int port : present)
    if (port != lost_port_ && !holds(known_, port)) ports.push_back(port);
  return ports;
}

}  // namespace homewarden::cm11
