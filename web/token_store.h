#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/settings.h"

namespace homewarden {

// The tokens as they lie in the user's settings, section "webtokens": under the numbers from 1 each
// "read 2026-11-24 07:30 5f3a... Dashboard", the right ("read" or "full"), when it was made, the
// hash of its secret, its name; and under "used 5f3a..." the day on which it was last used, apart
// from it, so that noting that brings no token back which another program has just revoked.
class TokenStore {
 public:
  static constexpr int kMost = 50;
  static constexpr std::size_t kLongestName = 40;

  struct Entry {
    int place = 0;  // 1 to kMost
    std::string name;
    std::string hash;
    bool may_change = false;
    std::string made;  // "2026-11-24 07:30"
    std::string used;  // "2026-11-24"; "" for never
    // Nothing of the entry can be used: it is no such text, or a name or a hash that an entry
    // before it has.
    bool is_damaged = false;
  };

  explicit TokenStore(Settings& settings) : settings_(settings) {}

  // By their places; none while the settings cannot be read.
  std::vector<Entry> entries() const;
  // Why there can be no further token of this name, in a sentence; "" when there can.
  std::string name_trouble(std::string_view name) const;
  // Stores it at the first free place, which is returned; 0, and nothing is stored, when there is
  // none or the name is not in order.
  int add(const std::string& name, const std::string& hash, bool may_change, Minute made);
  // Nothing happens when there is none there.
  void remove(int place);
  // Notes the day; stores nothing when it is noted already.
  void note_use(const Entry& entry, std::chrono::local_days day);

 private:
  Settings& settings_;
};

}  // namespace homewarden
