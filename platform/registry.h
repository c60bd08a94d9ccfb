#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/signal.h"
#include "platform/store_state.h"

namespace homewarden {

enum class RegistryRoot {
  kLocalMachine,  // seen by every user and by the background service
  kCurrentUser,
};

enum class RegistryType { kString = 1, kBinary = 3, kNumber = 4 };

struct RegistryValue {
  RegistryType type = RegistryType::kString;
  // A string: its bytes in the system code page, with or without a terminating zero.
  // A number: its decimal digits. Binary: the bytes.
  std::string data;

  bool operator==(const RegistryValue&) const = default;
};

// Typed values under keys. Keys are paths with backslashes; keys and value names are found without
// regard to the case of ASCII letters. Another process may read and write the same values: each
// value is written whole, the last writer wins. No member waits for the disk.
class Registry {
 public:
  virtual ~Registry() = default;

  // What was recorded last, whether it is on the disk yet or not. Nothing when the value does not
  // exist, or as long as state().is_read is false.
  virtual std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                            const std::string& name) = 0;

  // Recorded at once, creating the key when needed, and put on the disk a little later: state()
  // tells when. A kill or a power cut leaves on the disk what was recorded up to some change and
  // nothing after it. While the disk cannot be written, it is tried again and nothing is dropped.
  virtual void write(RegistryRoot root, const std::string& key, const std::string& name,
                     const RegistryValue& value) = 0;

  // As write(); nothing is wrong when there is no such value.
  virtual void remove(RegistryRoot root, const std::string& key, const std::string& name) = 0;

  // As long as this number is the same, so are all values of the root, whichever process changes
  // them; what another one has changed is found within a tenth of a second of being asked. It never
  // comes back to what it was in a run. Cheap enough to be asked for every page.
  virtual std::uint64_t changes(RegistryRoot root) = 0;

  virtual StoreState state(RegistryRoot root) = 0;

  // The state of a root is another one, or another process has changed its values. What this
  // process records and writes without trouble raises nothing.
  Signal<RegistryRoot> changed;
};

}  // namespace homewarden
