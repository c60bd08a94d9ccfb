#include "platform/http/requests.h"

#include <utility>

namespace homewarden::http {

bool Requests::room_for(const Address& from) const {
  const auto same = waiting_.find(from);
  return all_.size() - handled_ < limits_.waiting &&
         (same == waiting_.end() || same->second.size() < limits_.waiting_from_one);
}

void Requests::add(int id, Request request) {
  auto& queue = waiting_[request.from];
  if (queue.empty()) turns_.push_back(request.from);
  queue.push_back(id);
  all_.emplace(id, std::move(request));
}

std::optional<int> Requests::next(std::size_t at_once) {
  if (!has_next(at_once)) return std::nullopt;
  const Address address = turns_.front();
  turns_.pop_front();
  const auto queue = waiting_.find(address);
  const int id = queue->second.front();
  queue->second.pop_front();
  if (queue->second.empty())
    waiting_.erase(queue);
  else
    turns_.push_back(address);
  all_.at(id).handled = true;
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
  const auto queue = waiting_.find(found->second.from);
  std::erase(queue->second, id);
  if (queue->second.empty()) {
    std::erase(turns_, queue->first);
    waiting_.erase(queue);
  }
  all_.erase(found);
}

}  // namespace homewarden::http
