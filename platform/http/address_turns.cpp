#include "platform/http/address_turns.h"

namespace homewarden::http {

void AddressTurns::push(const Address& from, int id) {
  auto& own = ids_[from];
  if (own.empty()) turns_.push_back(from);
  own.push_back(id);
}

std::optional<int> AddressTurns::pop() {
  if (turns_.empty()) return std::nullopt;
  const Address address = turns_.front();
  turns_.pop_front();
  const auto own = ids_.find(address);
  const int id = own->second.front();
  own->second.pop_front();
  if (own->second.empty())
    ids_.erase(own);
  else
    turns_.push_back(address);
  return id;
}

bool AddressTurns::erase(const Address& from, int id) {
  const auto own = ids_.find(from);
  if (own == ids_.end() || std::erase(own->second, id) == 0) return false;
  if (own->second.empty()) {
    ids_.erase(own);
    std::erase(turns_, from);
  }
  return true;
}

}  // namespace homewarden::http
