#pragma once

#include <filesystem>

#include "platform/registry.h"
#include "platform/store/database.h"

namespace homewarden::store {

// The registry in two files: `machine.db` in the machine-wide folder, `user.db` in the person's.
// A file that is no database any more is set aside as `<name>.broken-<n>` and begun anew.
class SqliteRegistry : public Registry {
 public:
  SqliteRegistry(const std::filesystem::path& machine_folder,
                 const std::filesystem::path& user_folder)
      : machine_(machine_folder / "machine.db"), user_(user_folder / "user.db") {}

  std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                    const std::string& name) override {
    return database(root).read(key, name);
  }

  bool write(RegistryRoot root, const std::string& key, const std::string& name,
             const RegistryValue& value) override {
    return database(root).write(key, name, value);
  }

  bool remove(RegistryRoot root, const std::string& key, const std::string& name) override {
    return database(root).remove(key, name);
  }

  std::uint64_t changes(RegistryRoot root) override { return database(root).changes(); }

 private:
  Database& database(RegistryRoot root) {
    return root == RegistryRoot::kLocalMachine ? machine_ : user_;
  }

  Database machine_;
  Database user_;
};

}  // namespace homewarden::store
