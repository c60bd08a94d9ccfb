#pragma once

#include <deque>
#include <map>
#include <optional>

#include "platform/http/address.h"

namespace homewarden::http {

// Ids of requests in the order in which they are served: addresses take turns, those of one address
// keep their order.
class AddressTurns {
 public:
  bool empty() const { return turns_.empty(); }
  void push(const Address& from, int id);
  // Nothing when there is none.
  std::optional<int> pop();
  // False when it is not there.
  bool erase(const Address& from, int id);

 private:
  std::map<Address, std::deque<int>> ids_;
  std::deque<Address> turns_;  // each that has ids, once
};

}  // namespace homewarden::http
