#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "platform/http/address.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

// The switches that wait, and the pages that wait behind them. One switch is carried out at a time;
// addresses take turns, and what comes from one address keeps its order.
class SwitchLine {
 public:
  // The function is called with a page that waits no more: the switch before it is done or given
  // up.
  explicit SwitchLine(std::function<void(int)> page_is_free) : free_(std::move(page_is_free)) {}

  // Whether a switch of this address waits or is being carried out.
  bool occupies(const Address& from) const;
  // So many wait: altogether, switches and pages; of this address; switches of this address,
  // without the one whose turn it is already.
  std::size_t size() const { return size_; }
  std::size_t size(const Address& from) const;
  std::size_t switches(const Address& from) const;
  // Addresses that have switches waiting.
  std::size_t addresses() const { return turns_.size(); }

  // The same as the last switch of this device that waits is one with it and no switch more.
  bool joins(const Address& from, const WebSwitch& what) const;
  void add_switch(const Address& from, int id, WebSwitch what);
  // For an address that occupies the line.
  void add_page(const Address& from, int id);

  // Those that ask for the switch whose turn it is, the first of them first; empty while another
  // one is carried out, and when none waits.
  std::vector<int> next() const;
  // Whether next() had to wait for another one.
  bool next_waited() const;
  // The switch of next() is carried out from now on, in the name of the first. The others become
  // pages behind it, and are returned.
  std::vector<int> begin();
  // What is carried out, 0 for nothing; and the others that asked for it.
  int current() const { return current_; }
  const std::vector<int>& also_current() const { return also_current_; }
  void end();

  // Somebody does not wait any more. Nothing happens for what is not there.
  void leave(const Address& from, int id);

 private:
  // A switch and those that ask for it; or a page, alone.
  struct Step {
    std::optional<WebSwitch> what;
    std::vector<int> ids;
    bool waits = true;
  };
  using Steps = std::deque<Step>;

  void release_pages(const Address& from);

  const std::function<void(int)> free_;
  std::map<Address, Steps> lines_;
  std::deque<Address> turns_;  // each that has a switch waiting, once
  std::size_t size_ = 0;
  int current_ = 0;
  Address current_from_{};
  std::vector<int> also_current_;
};

}  // namespace homewarden::http
