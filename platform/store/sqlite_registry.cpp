#include "platform/store/sqlite_registry.h"

#include <utility>

namespace homewarden::store {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kOpening{1000};

}  // namespace

SqliteRegistry::SqliteRegistry(const std::filesystem::path& machine_folder,
                               const std::filesystem::path& user_folder, CallOnLoop call_on_loop)
    : machine_(machine_folder / "machine.db", teller(call_on_loop, RegistryRoot::kLocalMachine)),
      user_(user_folder / "user.db", teller(call_on_loop, RegistryRoot::kCurrentUser)) {
  const auto end = std::chrono::steady_clock::now() + kOpening;
  for (Database* one : {&machine_, &user_})
    one->wait_until_read(std::chrono::ceil<milliseconds>(end - std::chrono::steady_clock::now()));
}

std::optional<RegistryValue> SqliteRegistry::read(RegistryRoot root, const std::string& key,
                                                  const std::string& name) {
  return database(root).read(key, name);
}

void SqliteRegistry::write(RegistryRoot root, const std::string& key, const std::string& name,
                           const RegistryValue& value) {
  database(root).record(key, name, value);
}

void SqliteRegistry::remove(RegistryRoot root, const std::string& key, const std::string& name) {
  database(root).record(key, name, std::nullopt);
}

std::vector<std::string> SqliteRegistry::flush(milliseconds patience) {
  std::vector<std::string> unwritten;
  for (Database* one : {&machine_, &user_})
    if (!one->flush(patience)) unwritten.push_back(one->state().file);
  return unwritten;
}

std::function<void()> SqliteRegistry::teller(CallOnLoop call_on_loop, RegistryRoot root) {
  if (!call_on_loop) return [] {};
  return [call = std::move(call_on_loop), known = std::weak_ptr(self_), root] {
    call([known, root] {
      if (const auto self = known.lock()) (*self)->changed(root);
    });
  };
}

}  // namespace homewarden::store
