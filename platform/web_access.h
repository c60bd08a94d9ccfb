#pragma once

#include <string>
#include <vector>

namespace homewarden {

// Who may ask the web server, and from where, besides what needs no saying.
struct WebAccess {
  // Host names that are this machine's besides addresses, its own names, names without a dot and
  // those in domains that only homes use.
  std::vector<std::string> hosts{};
  // Pages of somebody else's that may look and switch: "http://dashboard.example:3000".
  std::vector<std::string> origins{};
  // Addresses and networks ("10.0.0.0/8") of proxies whose word counts on whom they ask for.
  std::vector<std::string> proxies{};
  // Whether 100.64.0.0/10 is at home, which providers and VPNs share.
  bool shared_addresses = false;
};

// A request for a page that shows states of devices.
struct StatePage {
  std::string home;         // the home page of its family, asked for without a query
  bool remembered = false;  // what the home page shows changes with it
};

}  // namespace homewarden
