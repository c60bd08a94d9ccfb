#include "platform/http/requests.h"

#include <algorithm>

namespace homewarden {

bool Requests::room_for(const Address& from) const {
  const auto same = waiting_from_.find(from);
  return waiting_.size() < limits_.waiting &&
         (same == waiting_from_.end() || same->second < limits_.waiting_from_one);
}

void Requests::add(int id, Request request) {
  ++waiting_from_[request.from];
  all_.emplace(id, std::move(request));
  waiting_.push_back(id);
}

std::optional<int> Requests::next(std::size_t at_once) {
  if (!has_next(at_once)) return std::nullopt;
  const int id = waiting_.front();
  waiting_.pop_front();
  Request& request = all_.at(id);
  stop_waiting(request);
  request.handled = true;
  ++handled_;
  return id;
}

const Request* Requests::find(int id) const {
  const auto found = all_.find(id);
  return found == all_.end() ? nullptr : &found->second;
}

Connection* Requests::finish(int id) {
  const auto found = all_.find(id);
  if (found == all_.end() || !found->second.handled) return nullptr;
  Connection* connection = found->second.connection;
  all_.erase(found);
  --handled_;
  return connection;
}

void Requests::desert(int id) {
  const auto found = all_.find(id);
  if (found == all_.end()) return;
  found->second.connection = nullptr;
  if (found->second.handled || found->second.switches) return;
  stop_waiting(found->second);
  waiting_.erase(std::find(waiting_.begin(), waiting_.end(), id));
  all_.erase(found);
}

void Requests::stop_waiting(const Request& request) {
  const auto same = waiting_from_.find(request.from);
  if (--same->second == 0) waiting_from_.erase(same);
}

}  // namespace homewarden
