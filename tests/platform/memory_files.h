#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/files.h"

namespace homewarden::testing {

// Files that live in memory. A stop can be set: from the n-th changing step on nothing happens any
// more, as if the power had gone.
class MemoryFiles : public Files {
 public:
  using path = std::filesystem::path;

  bool exists(const path& file) override { return has(find(file)); }

  std::optional<std::vector<std::string>> names_ending(const path& folder,
                                                       std::string_view ending) override {
    std::vector<std::string> names;
    for (const auto& [file, content] : contents)
      if (file.parent_path() == folder && to_lower(file.string()).ends_with(to_lower(ending)))
        names.push_back(file.filename().string());
    return names;
  }

  std::optional<std::string> read(const path& file) override {
    const auto found = contents.find(find(file));
    if (found == contents.end() || unreadable.count(found->first) > 0) return std::nullopt;
    return found->second;
  }

  std::optional<std::string> read_settled(const path& file) override { return read(file); }

  // The content itself stands for its stamp.
  std::optional<FileStamp> stamp(const path& file) override {
    const auto content = read(file);
    if (!content) return std::nullopt;
    return FileStamp{std::hash<std::string>()(*content), content->size(), 0};
  }

  // A write that is stopped leaves a part of the content, as a real one may.
  bool write(const path& file, std::string_view content) override {
    if (!step()) {
      if (steps_ == stop_at_)
        contents[find(file)] = content.substr(0, content.size() * torn_percent / 100);
      return false;
    }
    contents[find(file)] = content;
    return true;
  }

  bool write_secret(const path& file, std::string_view content) override {
    secrets.insert(file);
    return write(file, content);
  }

  bool append(const path& file, std::string_view content) override {
    if (!step()) return false;
    contents[find(file)] += content;
    return true;
  }

  bool rename(const path& from, const path& to) override {
    if (!step() || contents.count(find(from)) == 0) return false;
    auto moved = contents.extract(find(from));
    contents[find(to)] = std::move(moved.mapped());
    return true;
  }

  Exchange exchange(const path& from, const path& to, std::string_view known) override {
    if (!exchanges || !has(find(from)) || !step()) return Exchange::kCannot;
    if (read(to) != known) return Exchange::kChanged;
    std::swap(contents[find(from)], contents[find(to)]);
    return Exchange::kDone;
  }

  bool remove(const path& file) override {
    if (!step()) return false;
    contents.erase(find(file));
    return true;
  }

  // The n-th changing step from now, counted from 1, is the first that does not happen.
  void stop_at(int n) {
    steps_ = 0;
    stop_at_ = n;
  }
  void no_stop() { stop_at_ = 0; }

  std::size_t torn_percent = 50;
  bool exchanges = true;                   // as every disk can that is no network folder
  std::function<void(int)> before_change;  // with the number of the step that comes
  std::map<path, std::string> contents;
  std::set<path> unreadable;
  std::set<path> secrets;  // written for nobody else to read

  int steps() const { return steps_; }

  // Counts one changing step; false from the stop on.
  bool step() {
    ++steps_;
    if (before_change) before_change(steps_);
    return steps_ < stop_at_ || stop_at_ == 0;
  }

 private:
  bool has(const path& file) const { return contents.count(file) + unreadable.count(file) > 0; }

  path find(const path& file) const {
    if (has(file)) return file;
    for (const auto& [name, content] : contents)
      if (equals_ignoring_case(name.string(), file.string())) return name;
    return file;
  }

  int steps_ = 0;
  int stop_at_ = 0;
};

}  // namespace homewarden::testing
