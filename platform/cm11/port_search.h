#pragma once

#include <vector>

namespace homewarden::cm11 {

// Where to look for an interface that was unplugged: at its own port, and at ports that have
// appeared since, because a USB adapter comes back under another name. A port that was there all
// the time belongs to something else and is left alone.
class PortSearch {
 public:
  // The port that was lost, and the ports that exist right after the loss.
  PortSearch(int lost_port, std::vector<int> present);

  // The ports to try now, in order. To be asked regularly: a port that goes and comes back counts
  // as one that appeared.
  std::vector<int> candidates(const std::vector<int>& present);

 private:
  int lost_port_;
  std::vector<int> known_;
};

}  // namespace homewarden::cm11
