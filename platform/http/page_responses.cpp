#include "platform/http/page_responses.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {
namespace {

// The pages that a household looks at. To compare a text with a few others costs less than to find
// it by its hash.
constexpr std::size_t kMost = 16;

}  // namespace

const Response& PageResponses::of(const std::string& html,
                                  const std::function<std::string()>& policy) {
  const auto known = std::find_if(kept_.begin(), kept_.end(),
                                  [&html](const Kept& kept) { return kept.html == html; });
  if (known != kept_.end()) return known->response;
  Kept fresh{html, Response::page(html, policy())};
  if (kept_.size() < kMost) {
    kept_.push_back(std::move(fresh));
    return kept_.back().response;
  }
  Kept& place = kept_[std::exchange(oldest_, (oldest_ + 1) % kMost)];
  place = std::move(fresh);
  return place.response;
}

}  // namespace homewarden::http
