#pragma once

#include <string>
#include <vector>

namespace homewarden {

struct MicrophoneName {
  std::string id;    // as the sound system knows it, the same after the next start
  std::string name;  // for a person

  bool operator==(const MicrophoneName&) const = default;
};

// What can be listened with.
class Microphones {
 public:
  virtual ~Microphones() = default;

  // Those there are now, the usual one first. May take some ten milliseconds.
  virtual std::vector<MicrophoneName> names() = 0;

  // From the next listening on; "" is the desktop's usual one, and so is one that is not there.
  virtual void choose(const std::string& id) = 0;
};

}  // namespace homewarden
