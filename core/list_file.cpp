#include "core/list_file.h"

#include <utility>

#include "base/lines.h"
#include "core/replace_file.h"

namespace homewarden {
namespace {

// Some editors put it in front of the first line.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

ListFile::ListFile(Files& files, std::filesystem::path file, std::filesystem::path scratch)
    : files_(files), file_(std::move(file)), scratch_(std::move(scratch)) {}

bool ListFile::exists() {
  return files_.exists(file_);
}

std::optional<std::string> ListFile::content() {
  auto content = files_.read(file_);
  if (content && content->starts_with(kByteOrderMark)) content->erase(0, kByteOrderMark.size());
  return content;
}

bool ListFile::write_scratch(const Choice& left_out, std::string_view added) {
  std::string kept;
  if (exists()) {
    const auto old = content();
    if (!old) return false;
    kept.reserve(old->size() + added.size() + kLineEnd.size());
    LineReader reader(*old);
    while (const auto line = reader.next())
      if (!left_out(*line)) kept.append(*line).append(kLineEnd);
  }
  if (!added.empty()) kept.append(added).append(kLineEnd);
  return files_.write(scratch_, kept);
}

bool ListFile::use_scratch() {
  return files_.rename(scratch_, file_);
}

bool ListFile::add(std::string_view line) {
  const auto none = [](std::string_view) { return false; };
  if (write_scratch(none, line) && use_scratch()) return true;
  remove_scratch();
  return false;
}

void ListFile::remove_scratch() {
  if (files_.exists(scratch_)) files_.remove(scratch_);
}

void ListFile::recover() {
  discard_unfinished(files_, file_);
  if (!files_.exists(scratch_)) return;
  if (!exists()) {
    // A line that was cut off is none.
    auto content = files_.read(scratch_).value_or("");
    content.erase(content.rfind('\n') + 1);
    if (!content.empty() && replace_file(files_, file_, content)) return remove_scratch();
  }
  if (exists()) remove_scratch();
}

}  // namespace homewarden
