#include "core/notices.h"

#include <algorithm>

namespace homewarden {

void Notices::tell(const std::string& subject, std::string text) {
  const auto found = std::find_if(notices_.begin(), notices_.end(),
                                  [&](const auto& notice) { return notice.first == subject; });
  if (text == (found == notices_.end() ? std::string() : found->second)) return;
  if (text.empty())
    notices_.erase(found);
  else if (found == notices_.end())
    notices_.emplace_back(subject, text);
  else
    found->second = text;
  ++version_;
  changed(std::string(subject), text);
}

std::string Notices::of(const std::string& subject) const {
  for (const auto& [about, text] : notices_)
    if (about == subject) return text;
  return "";
}

std::string Notices::text() const {
  std::string all;
  for (const auto& [subject, text] : notices_) all.append(all.empty() ? "" : "\n").append(text);
  return all;
}

}  // namespace homewarden
