#include "platform/store/table.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace homewarden::store {
namespace {

const char* const kSchema =
    "CREATE TABLE IF NOT EXISTS value ("
    " key TEXT NOT NULL COLLATE NOCASE,"
    " name TEXT NOT NULL COLLATE NOCASE,"
    " type INTEGER NOT NULL,"
    " data BLOB NOT NULL,"
    " PRIMARY KEY (key, name)) WITHOUT ROWID;";

int run(sqlite3* database, const char* text) {
  return sqlite3_exec(database, text, nullptr, nullptr, nullptr);
}

int prepare(sqlite3* database, const char* text, Statement& statement) {
  sqlite3_stmt* made = nullptr;
  const int result = sqlite3_prepare_v2(database, text, -1, &made, nullptr);
  statement.reset(made);
  return result;
}

void bind_text(sqlite3_stmt* statement, int position, const std::string& text) {
  sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), nullptr);
}

std::string bytes_of(sqlite3_stmt* statement, int column) {
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  return data ? std::string(data, size) : std::string();
}

int find_table(sqlite3* database, bool& is_there) {
  Statement select;
  const int result = prepare(database, "SELECT 1 FROM sqlite_schema WHERE name='value'", select);
  if (result != SQLITE_OK) return result;
  is_there = sqlite3_step(select.get()) == SQLITE_ROW;
  return sqlite3_reset(select.get());
}

// Runs a statement that answers no rows and makes it ready for the next values.
int carry_out(sqlite3_stmt* statement) {
  sqlite3_step(statement);
  const int result = sqlite3_reset(statement);
  sqlite3_clear_bindings(statement);
  return result;
}

int store_all(sqlite3* database, const Changes& changes) {
  Statement upsert;
  Statement erase;
  int result = prepare(database,
                       "INSERT INTO value VALUES (?, ?, ?, ?) ON CONFLICT (key, name) "
                       "DO UPDATE SET type=excluded.type, data=excluded.data",
                       upsert);
  if (result == SQLITE_OK)
    result = prepare(database, "DELETE FROM value WHERE key=? AND name=?", erase);
  for (const auto& [name, change] : changes) {
    if (result != SQLITE_OK) return result;
    sqlite3_stmt* statement = change.value ? upsert.get() : erase.get();
    bind_text(statement, 1, name.key);
    bind_text(statement, 2, name.name);
    if (change.value) {
      const std::string& data = change.value->data;
      sqlite3_bind_int(statement, 3, static_cast<int>(change.value->type));
      sqlite3_bind_blob(statement, 4, data.data(), static_cast<int>(data.size()), nullptr);
    }
    result = carry_out(statement);
  }
  return result;
}

}  // namespace

void Closer::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

void Closer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

int set_up(sqlite3* database, bool& is_new) {
  int result = run(database, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;");
  bool is_there = false;
  if (result == SQLITE_OK) result = find_table(database, is_there);
  is_new = !is_there;
  return result == SQLITE_OK && is_new ? run(database, kSchema) : result;
}

int check_pages(sqlite3* database) {
  Statement check;
  const int result = prepare(database, "PRAGMA quick_check(1)", check);
  if (result != SQLITE_OK) return result;
  if (sqlite3_step(check.get()) == SQLITE_ROW && bytes_of(check.get(), 0) != "ok")
    return SQLITE_CORRUPT;
  return sqlite3_reset(check.get());
}

int load(sqlite3* database, Values& values) {
  bool is_there = false;
  int result = find_table(database, is_there);
  if (result != SQLITE_OK || !is_there) return result;
  Statement select;
  result = prepare(database, "SELECT key, name, type, data FROM value", select);
  if (result != SQLITE_OK) return result;
  while (sqlite3_step(select.get()) == SQLITE_ROW) {
    const auto type = static_cast<RegistryType>(sqlite3_column_int(select.get(), 2));
    values.insert_or_assign({bytes_of(select.get(), 0), bytes_of(select.get(), 1)},
                            RegistryValue{type, bytes_of(select.get(), 3)});
  }
  return sqlite3_reset(select.get());
}

int store_changes(sqlite3* database, const Changes& changes) {
  int result = run(database, "BEGIN IMMEDIATE");
  if (result != SQLITE_OK) return result;
  result = store_all(database, changes);
  if (result == SQLITE_OK) result = run(database, "COMMIT");
  if (result != SQLITE_OK && !sqlite3_get_autocommit(database)) run(database, "ROLLBACK");
  return result;
}

bool is_damage(int result) {
  return (result & 0xff) == SQLITE_NOTADB || (result & 0xff) == SQLITE_CORRUPT;
}

bool is_busy(int result) {
  const int kind = result & 0xff;
  return kind == SQLITE_BUSY || kind == SQLITE_LOCKED || kind == SQLITE_PROTOCOL;
}

}  // namespace homewarden::store
