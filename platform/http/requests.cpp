#include "platform/http/requests.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {

Requests::Requests(const HttpLimits& limits, std::size_t most_in_line)
    : limits_(limits),
      most_in_line_(std::min(most_in_line, limits.in_line)),
      line_([this](int id) { ready_.push(all_.at(id).from, id); }) {}

bool Requests::waits_in_line(const Request& request) const {
  return request.switches || (request.shows_states && line_.occupies(request.from));
}

// Whoever has nothing in line gets a place when others have taken all of them.
bool Requests::room_for(const Request& request) const {
  if (!waits_in_line(request)) return true;
  const std::size_t own = line_.size(request.from);
  if (own == 0) return line_.size() < most_in_line_ + most_in_line_ / 2;
  const bool one_more = request.switches && !line_.joins(request.from, *request.switches);
  if (one_more && line_.switches(request.from) >= limits_.switches_of_one) return false;
  return own < limits_.in_line_of_one && line_.size() < most_in_line_;
}

void Requests::add(int id, Request request) {
  const Address from = request.from;
  if (request.switches)
    line_.add_switch(from, id, *request.switches);
  else if (waits_in_line(request))
    line_.add_page(from, id);
  else
    ready_.push(from, id);
  all_.emplace(id, std::move(request));
}

bool Requests::has_next(std::size_t pages_at_once) const {
  return (!ready_.empty() && pages_handled_ < pages_at_once) || !line_.next().empty();
}

std::optional<int> Requests::next(std::size_t pages_at_once) {
  auto id = next_switch();
  if (!id && pages_handled_ < pages_at_once) {
    id = ready_.pop();
    if (id) ++pages_handled_;
  }
  if (id) all_.at(*id).handled = true;
  return id;
}

std::optional<int> Requests::next_switch() {
  if (line_.next().empty()) return std::nullopt;
  for (const int other : line_.begin()) {
    Request& request = all_.at(other);
    request.query = request.switches->shows;
    request.switches.reset();
  }
  return line_.current();
}

std::vector<int> Requests::due_after_waiting() const {
  auto ids = line_.next();
  if (ids.empty() || !line_.next_waited()) return {};
  return ids;
}

const Request* Requests::find(int id) const {
  const auto found = all_.find(id);
  return found == all_.end() ? nullptr : &found->second;
}

std::vector<int> Requests::askers(int id) const {
  std::vector<int> ids{id};
  if (id == line_.current())
    ids.insert(ids.end(), line_.also_current().begin(), line_.also_current().end());
  return ids;
}

Connection* Requests::finish(int id) {
  const auto found = all_.find(id);
  if (found == all_.end() || !found->second.handled) return nullptr;
  Connection* connection = found->second.connection;
  all_.erase(found);
  if (id == line_.current())
    line_.end();
  else
    --pages_handled_;
  return connection;
}

void Requests::desert(int id) {
  const auto found = all_.find(id);
  if (found == all_.end()) return;
  found->second.connection = nullptr;
  if (found->second.handled) return;
  const Address from = found->second.from;
  all_.erase(found);
  if (!ready_.erase(from, id)) line_.leave(from, id);
}

}  // namespace homewarden::http
