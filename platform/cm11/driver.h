#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/cm11/byte_stream.h"
#include "platform/cm11/command.h"
#include "platform/cm11/completion.h"
#include "platform/cm11/handshake.h"
#include "platform/cm11/port_search.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"

namespace homewarden::cm11 {

// The CM11 or CM12 at a serial port. Every command ends within a bounded time: sent, or reported by
// TroubleChanged. A port that is unplugged is looked for once a second until it is found or the
// interface is closed.
//
// Signals are raised and operations are resumed from the loop's own calls, so that whatever they do
// finds the driver at rest. The stream and the loop must outlive the driver.
class Driver : public InterfaceControl {
 public:
  // '>' bytes written, '<' bytes received, '#' a remark in words.
  using Trace = std::function<void(char direction, std::string_view bytes)>;

  Driver(EventLoop& loop, ByteStream& stream);
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  ~Driver() override;

  void PortNumber(int port) override { port_ = port; }
  Task<int> OpenInterface() override;
  std::string refused_ports() override { return stream_.refused_ports(); }
  void NumericOption(int option) override;
  void ClientName(const std::string& name) override;
  Task<bool> CloseInterface() override;
  bool is_receiving() override {
    return handshake_.is_receiving(loop_.uptime()) || !posted_.empty();
  }
  // 1: not sent, for certain or possibly. While the interface is unplugged a command waits until 8
  // seconds after the loss; later ones end at once.
  Task<int> SendX10(std::string house, std::string unit, int function, double amount, int option1,
                    int option2) override;

  // Replaces the one before; an empty function ends it. Called before the bytes are acted upon.
  void set_trace(Trace trace) { trace_ = std::move(trace); }

 private:
  using Milliseconds = std::chrono::milliseconds;

  enum class State {
    kClosed,
    kOpening,  // the port is open; OpenInterface waits for the status
    kConnected,
    kSearching,  // unplugged; no port is open
    kChecking,   // unplugged; a port that may be the one waits for the status
  };

  struct Waiting {
    Command command;
    std::shared_ptr<Completion> completion;
  };

  bool port_is_open() const { return state_ != State::kClosed && state_ != State::kSearching; }
  void received(std::string_view bytes);
  void lost();
  void pump();
  void attempt_ended(Outcome outcome);
  void check_ended(Outcome outcome);
  void command_ended(Outcome outcome);
  void begin_next();
  void begin_check(State state);
  void search();
  void arm();

  void end_opening(int result);
  void end_command(int result);
  void give_up_command(const std::string& reason);
  void give_up_all(const std::string& reason);
  void shut(const std::string& reason);
  void report(const std::string& trouble);
  void post(std::function<void()> outward);

  EventLoop& loop_;
  ByteStream& stream_;
  Trace trace_;
  Handshake handshake_;
  State state_ = State::kClosed;
  int port_ = 1;
  int open_port_ = 0;  // may differ from port_ after an unplugged interface has been found again

  std::deque<Waiting> queue_;  // the first one is being sent
  bool begun_ = false;         // an attempt at the first one is under way
  std::shared_ptr<Completion> opening_;
  Milliseconds check_until_{0};

  std::optional<PortSearch> port_search_;
  std::vector<int> candidates_;
  Milliseconds lost_at_{0};
  Milliseconds search_at_{0};

  std::string trouble_;
  EventLoop::CallId wake_ = 0;
  std::optional<Milliseconds> wake_at_;
  std::set<EventLoop::CallId> posted_;
  // What the stream's handlers hold, since they cannot be taken out; null once the driver is gone.
  std::shared_ptr<Driver*> self_;
};

}  // namespace homewarden::cm11
