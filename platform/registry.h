#pragma once

#include <cstdint>
#include <optional>
#include <string>

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
// value is written whole, the last writer wins.
class Registry {
 public:
  virtual ~Registry() = default;

  // Nothing when the value does not exist or cannot be read.
  virtual std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                            const std::string& name) = 0;

  // Creates the key when needed. A value that was written survives a kill and a power cut.
  // False when it could not be written; the value is then what it was before.
  virtual bool write(RegistryRoot root, const std::string& key, const std::string& name,
                     const RegistryValue& value) = 0;

  // True also when there was no such value. False when it could not be removed.
  virtual bool remove(RegistryRoot root, const std::string& key, const std::string& name) = 0;

  // As long as this number is the same, so are all values of the root, whichever process changes
  // them. It never comes back to what it was in a run.
  virtual std::uint64_t changes(RegistryRoot root) = 0;
};

}  // namespace homewarden
