#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/http/address.h"
#include "platform/http/address_turns.h"
#include "platform/http/http_limits.h"
#include "platform/http/switch_line.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

struct Connection;

struct Request {
  Connection* connection = nullptr;  // nothing when the client has gone
  Address from{};
  std::string page{};
  std::string query{};
  std::optional<WebSwitch> switches{};
  bool nameless = false;      // see Admission
  bool shows_states = false;  // a page, as opposed to what belongs to one
  bool handled = false;       // it has been handed to the program
};

// The requests that have not been answered. What switches nothing is handed over at once; only a
// page waits behind the switches of its own address, so that it shows what they did. Switches are
// handed over one at a time. Addresses take turns, so that many requests of one hold up nobody else
// for long; those of one address keep their order.
class Requests {
 public:
  // At most `most_in_line` wait for a switch or behind one; half as many more of addresses that
  // have nothing waiting.
  Requests(const HttpLimits& limits, std::size_t most_in_line);

  // False when so many wait, altogether or from its address, that it is not taken.
  bool room_for(const Request& request) const;
  // Addresses whose switches wait.
  std::size_t addresses_in_line() const { return line_.addresses(); }
  // Whether there is room is not looked at again. No request that is not answered may have this id.
  void add(int id, Request request);

  // Whether next() has one. No page has while `pages_at_once` are handled.
  bool has_next(std::size_t pages_at_once) const;
  // The request whose turn it is becomes one that is handled; a switch comes before pages.
  std::optional<int> next(std::size_t pages_at_once);
  // Those that ask for the switch that next() would hand over, when it has waited for another one;
  // empty otherwise.
  std::vector<int> due_after_waiting() const;

  // Nullptr when it is not there any more. Valid until it goes.
  const Request* find(int id) const;
  // This one, and those that asked for the same switch while it waited.
  std::vector<int> askers(int id) const;
  // Ends a request that is handled and returns its connection; nullptr when the client has gone, or
  // no such request is handled.
  Connection* finish(int id);
  // The client has gone. Unless it is handled the request goes too: what nobody waits for any more
  // is not switched. Nothing happens for an id that is not there, as 0.
  void desert(int id);

 private:
  bool waits_in_line(const Request& request) const;
  std::optional<int> next_switch();

  const HttpLimits limits_;
  const std::size_t most_in_line_;
  std::map<int, Request> all_;
  AddressTurns ready_;
  SwitchLine line_;
  std::size_t pages_handled_ = 0;
};

}  // namespace homewarden::http
