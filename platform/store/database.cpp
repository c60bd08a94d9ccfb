#include "platform/store/database.h"

#include <sqlite3.h>

#include <string_view>
#include <system_error>
#include <utility>

namespace homewarden::store {
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

// Processes open a file one after the other. Without that two could change a new file to a
// write-ahead log at once, for which SQLite does not wait; and one could begin a new file, or a new
// log, while another sets a damaged one aside, and have it taken away.
class Turn {
 public:
  explicit Turn(std::filesystem::path file) {
    file += ".turn";
    if (sqlite3_open(file.c_str(), &lock_) != SQLITE_OK) return;
    sqlite3_busy_timeout(lock_, kBusyMilliseconds);
    is_held_ = sqlite3_exec(lock_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() { sqlite3_close(lock_); }

  bool is_held() const { return is_held_; }

 private:
  sqlite3* lock_ = nullptr;
  bool is_held_ = false;
};

bool is_damage(int result) {
  return result == SQLITE_NOTADB || result == SQLITE_CORRUPT;
}

void set_aside(const std::filesystem::path& file) {
  for (int number = 1; number < 100; ++number) {
    std::filesystem::path aside = file;
    aside += ".broken-" + std::to_string(number);
    std::error_code error;
    if (std::filesystem::exists(aside, error)) continue;
    std::filesystem::rename(file, aside, error);
    for (const char* log : {"-wal", "-shm"}) {
      std::filesystem::path beside = file;
      std::filesystem::path beside_aside = aside;
      std::filesystem::rename(beside += log, beside_aside += log, error);
    }
    return;
  }
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
  ++changes_;
  return sqlite3_step(upsert_) == SQLITE_DONE;
}

bool Database::remove(const std::string& key, const std::string& name) {
  if (!open()) return false;
  const Use use(delete_);
  bind_text(delete_, 1, key);
  bind_text(delete_, 2, name);
  ++changes_;
  return sqlite3_step(delete_) == SQLITE_DONE;
}

std::uint64_t Database::changes() {
  if (!open()) return ++changes_;
  const Use use(version_);
  const bool known = sqlite3_step(version_) == SQLITE_ROW;
  const int version = known ? sqlite3_column_int(version_, 0) : 0;
  if (!known || version != seen_version_) ++changes_;
  seen_version_ = version;
  return changes_;
}

bool Database::open() {
  if (upsert_) return true;
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  const Turn turn(file_);
  int result = try_to_open();
  if (is_damage(result) && turn.is_held()) {
    set_aside(file_);
    result = try_to_open();
  }
  return result == SQLITE_OK;
}

int Database::try_to_open() {
  int result = sqlite3_open(file_.c_str(), &database_);
  if (result == SQLITE_OK) result = set_up();
  if (result != SQLITE_OK) close();
  return result;
}

int Database::set_up() {
  sqlite3_busy_timeout(database_, kBusyMilliseconds);
  int result = sqlite3_exec(database_, kSchema, nullptr, nullptr, nullptr);
  // A file that may not be written can still be read when its table is there.
  if (result == SQLITE_READONLY) result = SQLITE_OK;
  if (result == SQLITE_OK) result = check_pages();
  return result == SQLITE_OK ? prepare() : result;
}

// A file may begin as a database and have spoiled pages further on, which nothing would get past.
int Database::check_pages() {
  sqlite3_stmt* check = nullptr;
  int result = sqlite3_prepare_v2(database_, "PRAGMA quick_check(1)", -1, &check, nullptr);
  if (result == SQLITE_OK) result = sqlite3_step(check);
  if (result == SQLITE_ROW) {
    const auto* verdict = static_cast<const char*>(sqlite3_column_blob(check, 0));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(check, 0));
    result = verdict && std::string_view(verdict, size) == "ok" ? SQLITE_OK : SQLITE_CORRUPT;
  }
  sqlite3_finalize(check);
  return result;
}

int Database::prepare() {
  const auto make = [this](const char* text, sqlite3_stmt** statement) {
    return sqlite3_prepare_v3(database_, text, -1, SQLITE_PREPARE_PERSISTENT, statement, nullptr);
  };
  int result = make("SELECT type, data FROM value WHERE key=? AND name=?", &select_);
  if (result == SQLITE_OK) result = make("DELETE FROM value WHERE key=? AND name=?", &delete_);
  // A number that changes when another connection has changed the file.
  if (result == SQLITE_OK) result = make("PRAGMA data_version", &version_);
  if (result != SQLITE_OK) return result;
  // The last one: where it is there, the file is open.
  return make(
      "INSERT INTO value VALUES (?, ?, ?, ?) ON CONFLICT (key, name) "
      "DO UPDATE SET type=excluded.type, data=excluded.data",
      &upsert_);
}

void Database::close() {
  sqlite3_finalize(std::exchange(select_, nullptr));
  sqlite3_finalize(std::exchange(delete_, nullptr));
  sqlite3_finalize(std::exchange(version_, nullptr));
  sqlite3_finalize(std::exchange(upsert_, nullptr));
  ++changes_;
  sqlite3_close(std::exchange(database_, nullptr));
}

}  // namespace homewarden::store
