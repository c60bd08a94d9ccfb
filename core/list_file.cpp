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
  auto content = files_.read_settled(file_);
  if (content && content->starts_with(kByteOrderMark)) content->erase(0, kByteOrderMark.size());
  return content;
}

bool ListFile::write_scratch(const Choice& left_out, std::string_view added) {
  return begin({left_out, nullptr, std::string(added), std::nullopt, nullptr});
}

bool ListFile::write_edited(const Edit& edit) {
  return begin({nullptr, edit, "", std::nullopt, nullptr});
}

bool ListFile::write_made(const Make& make) {
  return begin({nullptr, nullptr, "", std::nullopt, make});
}

bool ListFile::begin(Change change) {
  if (exists()) {
    change.made_from = files_.read_settled(file_);
    if (!change.made_from) return false;
  }
  change_ = std::move(change);
  return write_change();
}

bool ListFile::write_change() {
  std::string_view old;
  if (change_->made_from) old = *change_->made_from;
  if (old.starts_with(kByteOrderMark)) old.remove_prefix(kByteOrderMark.size());
  if (change_->make) return files_.write(scratch_, change_->make(old));
  std::string kept;
  kept.reserve(old.size() + change_->added.size() + kLineEnd.size());
  LineReader reader(old);
  while (const auto line = reader.next()) {
    if (change_->left_out && change_->left_out(*line)) continue;
    const auto edited = change_->edit ? change_->edit(*line) : std::nullopt;
    kept.append(edited ? *edited : *line).append(kLineEnd);
  }
  if (!change_->added.empty()) kept.append(change_->added).append(kLineEnd);
  return files_.write(scratch_, kept);
}

// Makes the scratch file from the list as it is now; false when it is still the same. Nothing when
// that cannot be done.
std::optional<bool> ListFile::bring_up_to_date() {
  std::optional<std::string> now;
  if (exists()) {
    now = files_.read_settled(file_);
    if (!now) return std::nullopt;
  }
  if (now == change_->made_from) return false;
  if (!now && change_->adds()) return std::nullopt;
  change_->made_from = std::move(now);
  if (!write_change()) return std::nullopt;
  return true;
}

bool ListFile::use_scratch() {
  if (!change_) return false;
  constexpr int kAttempts = 8;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto changed = bring_up_to_date();
    // Refused, and yet the same: somebody goes on writing it.
    if (!changed || (attempt > 0 && !*changed)) return false;
    const auto& old = change_->made_from;
    if (!old && !change_->adds()) {
      remove_scratch();
      return true;
    }
    const Exchange exchange = old ? files_.exchange(scratch_, file_, *old) : Exchange::kCannot;
    if (exchange == Exchange::kDone) {
      remove_scratch();
      return true;
    }
    if (exchange == Exchange::kCannot) {
      if (!files_.rename(scratch_, file_)) return false;
      change_.reset();
      return true;
    }
  }
  return false;
}

bool ListFile::add(std::string_view line) {
  const auto none = [](std::string_view) { return false; };
  if (write_scratch(none, line) && use_scratch()) return true;
  remove_scratch();
  return false;
}

void ListFile::remove_scratch() {
  change_.reset();
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
