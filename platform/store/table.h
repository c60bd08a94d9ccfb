#pragma once

#include <memory>

#include "platform/store/values.h"

struct sqlite3;
struct sqlite3_stmt;

namespace homewarden::store {

struct Closer {
  void operator()(sqlite3* database) const;
  void operator()(sqlite3_stmt* statement) const;
};
using Handle = std::unique_ptr<sqlite3, Closer>;
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

// The one table of a file. All of them answer a result code of the library.

// Makes the table when there is none, which `is_new` then says. The file is one with a write-ahead
// log and full synchronisation afterwards: what was written survives a power cut, and readers are
// not held up by a writer.
int set_up(sqlite3* database, bool& is_new);

// A file may begin as a database and have spoiled pages further on, which nothing would get past.
int check_pages(sqlite3* database);

// Adds everything in the table to `values`: nothing when there is none, since a full disk left a
// file that was only begun.
int load(sqlite3* database, Values& values);

// Writes all changes, or none of them.
int store_changes(sqlite3* database, const Changes& changes);

// Whether the file itself is broken, and not merely what lies around it.
bool is_damage(int result);
// Whether another process holds the file, which passes.
bool is_busy(int result);

}  // namespace homewarden::store
