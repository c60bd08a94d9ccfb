#include "platform/http/api_requests.h"

#include <utility>

namespace homewarden::http {

using std::chrono::milliseconds;

ApiRequests::ApiRequests(const HttpLimits& limits)
    : most_(limits.calls),
      most_of_one_(limits.calls_of_one),
      rate_(limits.calls_at_once, limits.calls_per_second) {}

std::optional<Refusal> ApiRequests::too_often(const Address& from, milliseconds now) {
  const milliseconds wait = rate_.wait(from, now);
  if (wait == milliseconds(0)) return std::nullopt;
  return Refusal{429, "Requests come too fast from this address.", "Retry-After",
                 std::to_string(std::chrono::ceil<std::chrono::seconds>(wait).count())};
}

std::optional<Refusal> ApiRequests::too_many(const Address& from) const {
  const auto own = open_.find(from);
  const bool has_share = own != open_.end() && own->second >= most_of_one_;
  if (!has_share && all_.size() < most_) return std::nullopt;
  return Refusal{429,
                 has_share ? "Too many requests of this address have not been answered yet."
                           : "Too many requests have not been answered yet.",
                 "Retry-After", "1"};
}

void ApiRequests::add(int id, Connection& connection, const Address& from, ApiRequest request) {
  all_.emplace(id, Waiting{&connection, from, std::move(request)});
  ++open_[from];
  ready_.push(from, id);
}

std::optional<int> ApiRequests::next() {
  const auto id = ready_.pop();
  if (id) all_.at(*id).handled = true;
  return id;
}

const ApiRequest* ApiRequests::find(int id) const {
  const auto found = all_.find(id);
  return found == all_.end() ? nullptr : &found->second.request;
}

Connection* ApiRequests::connection(int id) const {
  const auto found = all_.find(id);
  return found == all_.end() ? nullptr : found->second.connection;
}

Connection* ApiRequests::finish(int id) {
  const auto found = all_.find(id);
  if (found == all_.end()) return nullptr;
  Connection* connection = found->second.connection;
  erase(found);
  return connection;
}

void ApiRequests::desert(int id) {
  const auto found = all_.find(id);
  if (found == all_.end()) return;
  found->second.connection = nullptr;
  if (!found->second.handled) erase(found);
}

void ApiRequests::erase(std::map<int, Waiting>::iterator place) {
  const Address from = place->second.from;
  if (!place->second.handled) ready_.erase(from, place->first);
  const auto own = open_.find(from);
  if (--own->second == 0) open_.erase(own);
  all_.erase(place);
}

}  // namespace homewarden::http
