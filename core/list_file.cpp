#include "automation/event_file.h"

#include "base/lines.h"
#include "base/text.h"

namespace homewarden {
namespace {

// Some editors put it in front of the first line.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

EventFile::EventFile(Files& files, const std::filesystem::path& folder)
    : files_(files), file_(folder / "evelst.hwd"), scratch_(folder / "temp.txt") {}

bool EventFile::exists() {
  return files_.exists(file_);
}

std::optional<std::string> EventFile::content() {
  auto content = files_.read(file_);
  if (content && content->starts_with(kByteOrderMark)) content->erase(0, kByteOrderMark.size());
  return content;
}

bool EventFile::write_scratch(std::string_view left_out, std::string_view added) {
  std::string kept;
  if (exists()) {
    const auto old = files_.read(file_);
    if (!old) return false;
    kept.reserve(old->size() + added.size() + kLineEnd.size());
    LineReader reader(*old);
    while (const auto line = reader.next()) {
      if (!left_out.empty() && contains_ignoring_case(*line, left_out)) continue;
      kept.append(*line).append(kLineEnd);
    }
  }
  if (!added.empty()) kept.append(added).append(kLineEnd);
  return files_.write(scratch_, kept);
}

bool EventFile::use_scratch() {
  return files_.rename(scratch_, file_);
}

void EventFile::remove_scratch() {
  if (files_.exists(scratch_)) files_.remove(scratch_);
}

void EventFile::recover() {
  if (!files_.exists(scratch_)) return;
  if (exists())
    files_.remove(scratch_);
  else
    use_scratch();
}

}  // namespace homewarden
