#include "tools/emulator/agenda.h"

#include <algorithm>

namespace homewarden::emulator {

Agenda::Id Agenda::after(Microseconds delay, std::function<void()> call) {
  const Id id = ++last_id_;
  calls_.emplace(std::pair(now_ + std::max(delay, Microseconds(0)), id), std::move(call));
  return id;
}

void Agenda::cancel(Id id) {
  std::erase_if(calls_, [id](const auto& call) { return call.first.second == id; });
}

void Agenda::run_until(Microseconds end) {
  while (!calls_.empty() && calls_.begin()->first.first <= end) {
    const auto call = calls_.extract(calls_.begin());
    now_ = std::max(now_, call.key().first);
    call.mapped()();
  }
  now_ = std::max(now_, end);
}

std::optional<Microseconds> Agenda::next() const {
  if (calls_.empty()) return std::nullopt;
  return calls_.begin()->first.first;
}

}  // namespace homewarden::emulator
