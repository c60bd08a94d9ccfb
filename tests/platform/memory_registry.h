#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "platform/registry.h"

namespace homewarden::testing {

// Values that lie in memory twice: as they are recorded, and as they are on a disk that can refuse
// them or be slow.
class MemoryRegistry : public Registry {
 public:
  std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                    const std::string& name) override {
    const auto found = values_.find({root, found_as(key), found_as(name)});
    if (!is_read || found == values_.end()) return std::nullopt;
    return found->second;
  }
  void write(RegistryRoot root, const std::string& key, const std::string& name,
             const RegistryValue& value) override {
    record({root, found_as(key), found_as(name)}, value);
  }
  void remove(RegistryRoot root, const std::string& key, const std::string& name) override {
    record({root, found_as(key), found_as(name)}, std::nullopt);
  }
  std::uint64_t changes(RegistryRoot) override { return changes_; }

  // The two roots share their numbers.
  StoreState state(RegistryRoot root) override {
    write_out();
    StoreState state;
    state.is_read = is_read;
    state.trouble = waiting_.empty() && trouble == StoreTrouble::kNone ? StoreTrouble::kNone
                    : trouble == StoreTrouble::kNone                   ? StoreTrouble::kReadOnly
                                                                       : trouble;
    state.recorded = changes_;
    state.on_disk = changes_ - waiting_.size();
    state.file = root == RegistryRoot::kLocalMachine ? "machine.db" : "user.db";
    state.set_aside = set_aside;
    return state;
  }

  // A kill: what is not on the disk is gone.
  void lose_unwritten() {
    waiting_.clear();
    values_ = disk_;
  }

  // Asked before each change of the disk when it is set: false while it refuses, or from when the
  // power is gone.
  std::function<bool()> may_change;
  // Whether the disk is written only when somebody asks how it stands, so that what is not waited
  // for comes as late as it may.
  bool is_lazy = false;
  // As in StoreState, of both roots.
  bool is_read = true;
  StoreTrouble trouble = StoreTrouble::kNone;
  std::string set_aside;

 private:
  using Where = std::tuple<RegistryRoot, std::string, std::string>;
  using Change = std::pair<Where, std::optional<RegistryValue>>;
  using Values = std::map<Where, RegistryValue>;

  void record(Where where, std::optional<RegistryValue> value) {
    waiting_.emplace_back(std::move(where), std::move(value));
    apply(waiting_.back(), values_);
    ++changes_;
    if (!is_lazy) write_out();
  }
  void write_out() {
    for (; !waiting_.empty() && (!may_change || may_change()); waiting_.pop_front())
      apply(waiting_.front(), disk_);
  }
  static void apply(const Change& change, Values& values) {
    if (change.second)
      values[change.first] = *change.second;
    else
      values.erase(change.first);
  }
  // Only ASCII letters lose their case, as in a real registry of this program.
  static std::string found_as(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
      return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 0x20) : letter;
    });
    return text;
  }

  Values values_;
  Values disk_;
  std::deque<Change> waiting_;
  std::uint64_t changes_ = 0;
};

}  // namespace homewarden::testing
