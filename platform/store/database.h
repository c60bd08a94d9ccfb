#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/registry.h"

struct sqlite3;
struct sqlite3_stmt;

namespace homewarden::store {

// One file of typed values: a table of key, name, type, data. Opened at the first use, and again
// after a failure, so that a folder that appears later is found.
class Database {
 public:
  // Nothing is opened yet: a folder that is missing is no failure here.
  explicit Database(std::filesystem::path file);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  // As those of Registry. A write, and the first use of the file, may wait up to 5 seconds for
  // another process.
  std::optional<RegistryValue> read(const std::string& key, const std::string& name);
  bool write(const std::string& key, const std::string& name, const RegistryValue& value);
  bool remove(const std::string& key, const std::string& name);

  // See Registry::changes().
  std::uint64_t changes();

 private:
  bool open();
  // These answer a result code of SQLite.
  int try_to_open();
  int set_up();
  int check_pages();
  int prepare();
  void close();

  std::filesystem::path file_;
  sqlite3* database_ = nullptr;
  sqlite3_stmt* select_ = nullptr;
  sqlite3_stmt* delete_ = nullptr;
  sqlite3_stmt* version_ = nullptr;
  sqlite3_stmt* upsert_ = nullptr;
  std::uint64_t changes_ = 0;
  int seen_version_ = 0;  // of the file, as others have changed it
};

}  // namespace homewarden::store
