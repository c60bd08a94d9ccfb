#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/store/exchange.h"

namespace homewarden::store {

// One file of typed values: a table of key, name, type, data. All of them are in memory, too; the
// disk's work is done by a thread.
class Database {
 public:
  // Begins to open the file. `tell` is called from another thread when the state has changed or
  // another process has changed values, until this object goes.
  Database(std::filesystem::path file, std::function<void()> tell);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  // What is not on the disk yet is given two seconds, unless flush() was in vain before.
  ~Database();

  // As those of Registry.
  std::optional<RegistryValue> read(const std::string& key, const std::string& name);
  void record(const std::string& key, const std::string& name, std::optional<RegistryValue> value);
  std::uint64_t changes();
  StoreState state();

  // These wait, and answer whether it has come to that in the time given: that the file is read;
  // that all that was recorded is on the disk.
  bool wait_until_read(std::chrono::milliseconds patience);
  bool flush(std::chrono::milliseconds patience);

 private:
  using Clock = std::chrono::steady_clock;

  void take_news();
  void put_waiting(const Name& name, std::optional<RegistryValue> value);

  const std::shared_ptr<Exchange> exchange_;
  Values values_;  // what is shown: the file's, and over them what waits
  std::uint64_t changes_ = 0;
  Clock::time_point looked_{};
  bool is_hopeless_ = false;  // the last flush was in vain, and nothing has been recorded since
  std::thread writer_;
};

}  // namespace homewarden::store
