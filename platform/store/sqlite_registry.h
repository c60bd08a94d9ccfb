#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/registry.h"
#include "platform/store/database.h"

namespace homewarden::store {

// The registry in two files: `machine.db` in the machine-wide folder, `user.db` in the person's.
// A file that is no database any more is set aside as `<name>.broken-<n>` and begun anew.
class SqliteRegistry : public Registry {
 public:
  // Calls a function from the program's event loop; it is called itself from other threads.
  using CallOnLoop = std::function<void(std::function<void()>)>;

  // Opens the files and waits until they are read, a second at most: whoever holds one of them
  // locked holds nothing else up. Without `call_on_loop` the signal `changed` is never raised.
  SqliteRegistry(const std::filesystem::path& machine_folder,
                 const std::filesystem::path& user_folder, CallOnLoop call_on_loop = {});

  std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                    const std::string& name) override;
  void write(RegistryRoot root, const std::string& key, const std::string& name,
             const RegistryValue& value) override;
  void remove(RegistryRoot root, const std::string& key, const std::string& name) override;
  std::uint64_t changes(RegistryRoot root) override { return database(root).changes(); }
  StoreState state(RegistryRoot root) override { return database(root).state(); }

  // Waits until everything that was recorded is on the disk, so long at most for each file: for the
  // end of the program. Answers the files that do not have it all.
  std::vector<std::string> flush(std::chrono::milliseconds patience);

 private:
  std::function<void()> teller(CallOnLoop call_on_loop, RegistryRoot root);
  Database& database(RegistryRoot root) {
    return root == RegistryRoot::kLocalMachine ? machine_ : user_;
  }

  // Known to the functions that the loop has not called yet, and gone with this object.
  std::shared_ptr<SqliteRegistry*> self_ = std::make_shared<SqliteRegistry*>(this);
  Database machine_;
  Database user_;
};

}  // namespace homewarden::store
