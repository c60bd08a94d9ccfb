#include "platform/store/database.h"

#include <sqlite3.h>

#include <system_error>
#include <utility>

namespace homewarden {
namespace {

// How long a write waits for the other process to finish its own.
constexpr int kBusyMilliseconds = 5000;

// With a write-ahead log and full synchronisation a value that was written survives a power cut,
// and readers are never held up by the writer.
const char* const kSchema =
    "PRAGMA journal_mode=WAL;"
    "PRAGMA synchronous=FULL;"
    "CREATE TABLE IF NOT EXISTS value ("
    " key TEXT NOT NULL COLLATE NOCASE,"
    " name TEXT NOT NULL COLLATE NOCASE,"
    " type INTEGER NOT NULL,"
    " data BLOB NOT NULL,"
    " PRIMARY KEY (key, name)) WITHOUT ROWID;";

// Puts a statement back into its first state on every way out.
class Use {
 public:
  explicit Use(sqlite3_stmt* statement) : statement_(statement) {}
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;
  ~Use() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }

 private:
  sqlite3_stmt* statement_;
};

void bind_text(sqlite3_stmt* statement, int position, const std::string& text) {
  sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), nullptr);
}

}  // namespace

Database::Database(std::filesystem::path file) : file_(std::move(file)) {}

Database::~Database() {
  close();
}

std::optional<RegistryValue> Database::read(const std::string& key, const std::string& name) {
  if (!open()) return std::nullopt;
  const Use use(select_);
  bind_text(select_, 1, key);
  bind_text(select_, 2, name);
  if (sqlite3_step(select_) != SQLITE_ROW) return std::nullopt;
  RegistryValue value;
  value.type = static_cast<RegistryType>(sqlite3_column_int(select_, 0));
  const auto* data = static_cast<const char*>(sqlite3_column_blob(select_, 1));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(select_, 1));
  if (data) value.data.assign(data, size);
  return value;
}

bool Database::write(const std::string& key, const std::string& name, const RegistryValue& value) {
  if (!open()) return false;
  const Use use(upsert_);
  bind_text(upsert_, 1, key);
  bind_text(upsert_, 2, name);
  sqlite3_bind_int(upsert_, 3, static_cast<int>(value.type));
  sqlite3_bind_blob(upsert_, 4, value.data.data(), static_cast<int>(value.data.size()), nullptr);
  return sqlite3_step(upsert_) == SQLITE_DONE;
}

bool Database::open() {
  if (upsert_) return true;
  if (try_to_open()) return true;
  if (error_ != SQLITE_NOTADB && error_ != SQLITE_CORRUPT) return false;
  set_broken_file_aside();
  return try_to_open();
}

bool Database::try_to_open() {
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  const bool opened = sqlite3_open(file_.c_str(), &database_) == SQLITE_OK && prepare();
  error_ = database_ ? sqlite3_errcode(database_) : SQLITE_NOMEM;
  if (!opened) close();
  return opened;
}

bool Database::prepare() {
  sqlite3_busy_timeout(database_, kBusyMilliseconds);
  if (sqlite3_exec(database_, kSchema, nullptr, nullptr, nullptr) != SQLITE_OK) {
    // A file that may not be written can still be read when its table is there.
    if (sqlite3_errcode(database_) != SQLITE_READONLY) return false;
  }
  return sqlite3_prepare_v3(database_, "SELECT type, data FROM value WHERE key=? AND name=?", -1,
                            SQLITE_PREPARE_PERSISTENT, &select_, nullptr) == SQLITE_OK &&
         sqlite3_prepare_v3(database_,
                            "INSERT INTO value VALUES (?, ?, ?, ?) ON CONFLICT (key, name) "
                            "DO UPDATE SET type=excluded.type, data=excluded.data",
                            -1, SQLITE_PREPARE_PERSISTENT, &upsert_, nullptr) == SQLITE_OK;
}

void Database::close() {
  sqlite3_finalize(std::exchange(select_, nullptr));
  sqlite3_finalize(std::exchange(upsert_, nullptr));
  sqlite3_close(std::exchange(database_, nullptr));
}

void Database::set_broken_file_aside() {
  for (int number = 1; number < 100; ++number) {
    std::filesystem::path aside = file_;
    aside += ".broken-" + std::to_string(number);
    std::error_code error;
    if (std::filesystem::exists(aside, error)) continue;
    std::filesystem::rename(file_, aside, error);
    for (const char* log : {"-wal", "-shm"}) {
      std::filesystem::path file = file_;
      std::filesystem::path log_aside = aside;
      std::filesystem::rename(file += log, log_aside += log, error);
    }
    return;
  }
}

}  // namespace homewarden
