#include "platform/store/turn.h"

#include <sqlite3.h>

#include <string>
#include <system_error>

namespace homewarden::store {

Turn::Turn(std::filesystem::path file) {
  file += ".turn";
  sqlite3* opened = nullptr;
  int result = sqlite3_open(file.c_str(), &opened);
  lock_.reset(opened);
  if (result == SQLITE_OK)
    result = sqlite3_exec(opened, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  is_held_ = result == SQLITE_OK;
  is_taken_ = is_busy(result);
}

std::filesystem::path set_aside(const std::filesystem::path& file) {
  for (int number = 1; number < 100; ++number) {
    std::filesystem::path aside = file;
    aside += ".broken-" + std::to_string(number);
    std::error_code error;
    if (std::filesystem::exists(aside, error)) continue;
    std::filesystem::rename(file, aside, error);
    if (error) return {};
    for (const char* log : {"-wal", "-shm"}) {
      std::filesystem::path beside = file;
      std::filesystem::path beside_aside = aside;
      std::filesystem::rename(beside += log, beside_aside += log, error);
    }
    return aside;
  }
  return {};
}

}  // namespace homewarden::store
