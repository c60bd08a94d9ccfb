#include "platform/http/rate_limit.h"

#include <algorithm>
#include <cmath>

namespace homewarden::http {

using std::chrono::milliseconds;

milliseconds RateLimit::wait(const Address& from, milliseconds now) {
  auto found = buckets_.find(from);
  if (found == buckets_.end()) {
    if (buckets_.size() >= remembered_) forget_one();
    found = buckets_.emplace(from, Bucket{at_once_, now}).first;
  }
  Bucket& bucket = found->second;
  const double seconds = std::chrono::duration<double>(now - bucket.filled).count();
  bucket.tokens = std::min(at_once_, bucket.tokens + seconds * per_second_);
  bucket.filled = now;
  if (bucket.tokens < 1)
    return milliseconds(static_cast<long>(std::ceil((1 - bucket.tokens) / per_second_ * 1000)));
  bucket.tokens -= 1;
  return milliseconds(0);
}

void RateLimit::forget_one() {
  const auto quietest = std::min_element(
      buckets_.begin(), buckets_.end(),
      [](const auto& a, const auto& b) { return a.second.filled < b.second.filled; });
  if (quietest != buckets_.end()) buckets_.erase(quietest);
}

}  // namespace homewarden::http
