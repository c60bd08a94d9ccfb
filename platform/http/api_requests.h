#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "platform/http/address.h"
#include "platform/http/address_turns.h"
#include "platform/http/http_limits.h"
#include "platform/http/rate_limit.h"
#include "platform/http/refusal.h"
#include "platform/web_api.h"

namespace homewarden::http {

struct Connection;

// The requests of programs that have not been answered. None waits for another one; addresses take
// turns.
class ApiRequests {
 public:
  explicit ApiRequests(const HttpLimits& limits);

  // Counts a request of this address; why it is not taken.
  std::optional<Refusal> too_often(const Address& from, std::chrono::milliseconds now);
  // Whether so many are not answered that one more of this address is not taken.
  std::optional<Refusal> too_many(const Address& from) const;

  // No request that is not answered may have this id.
  void add(int id, Connection& connection, const Address& from, ApiRequest request);
  bool has_next() const { return !ready_.empty(); }
  // The one whose turn it is; it is handled from now on.
  std::optional<int> next();

  // Nullptr when it is not there any more. Valid until it goes.
  const ApiRequest* find(int id) const;
  // Nullptr when the client has gone or there is no such request.
  Connection* connection(int id) const;
  // Ends a request and returns its connection; nullptr as above.
  Connection* finish(int id);
  // The client has gone. What is handled already stays until it is finished, and counts.
  void desert(int id);

 private:
  struct Waiting {
    Connection* connection = nullptr;
    Address from;
    ApiRequest request;
    bool handled = false;
  };

  void erase(std::map<int, Waiting>::iterator place);

  const std::size_t most_;
  const std::size_t most_of_one_;
  RateLimit rate_;
  std::map<int, Waiting> all_;
  std::map<Address, std::size_t> open_;
  AddressTurns ready_;
};

}  // namespace homewarden::http
