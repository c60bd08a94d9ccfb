#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace homewarden::http {

struct SelfSigned {
  std::string certificate;  // PEM, each with a line before it that says who made it
  std::string key;
};

// A key (ECDSA, P-256) and a certificate for these host names and addresses that it signs itself.
// It holds from an hour before `now`, for clocks that are late, at most for 825 days: browsers
// take none for longer. The first name is that of its subject. Empty texts when it cannot be made.
SelfSigned make_self_signed(const std::vector<std::string>& names,
                            std::chrono::system_clock::time_point now, int days);

}  // namespace homewarden::http
