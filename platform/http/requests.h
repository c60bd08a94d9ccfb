#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>

#include "platform/http/address.h"
#include "platform/http/http_limits.h"

namespace homewarden::http {

struct Connection;

struct Request {
  Connection* connection = nullptr;  // nothing when the client has gone
  Address from{};
  std::string page{};
  std::string query{};
  bool switches = false;
  bool handled = false;  // it has been handed to the program
};

// The requests that have not been answered. Addresses take turns, so that many requests of one hold
// up nobody else for long; those of one address keep their order.
class Requests {
 public:
  explicit Requests(const HttpLimits& limits) : limits_(limits) {}

  // False when so many wait, altogether or from this address, that no more are taken.
  bool room_for(const Address& from) const;
  // Whether there is room is not looked at again. No request that is not answered may have this id.
  void add(int id, Request request);

  // The request whose turn it is becomes one that is handled; nothing when `at_once` are
  // handled already.
  std::optional<int> next(std::size_t at_once);
  bool has_next(std::size_t at_once) const { return !turns_.empty() && handled_ < at_once; }

  // Nullptr when it is not there any more. Valid until it goes.
  const Request* find(int id) const;
  // Ends a request that is handled and returns its connection; nullptr when the client has gone, or
  // no such request is handled.
  Connection* finish(int id);
  // The client has gone. What it asked to be switched is still handed over: whoever presses a lamp
  // and closes the page means it. Nothing happens for an id that is not there, as 0.
  void desert(int id);

 private:
  const HttpLimits limits_;
  std::map<int, Request> all_;
  std::map<Address, std::deque<int>> waiting_;
  std::deque<Address> turns_;  // each that has requests waiting, once
  std::size_t handled_ = 0;
};

}  // namespace homewarden::http
