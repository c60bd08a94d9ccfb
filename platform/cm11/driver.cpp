#include "platform/cm11/driver.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "platform/cm11/codec.h"

namespace homewarden::cm11 {

namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

// How long a port is asked for the status. Three requests fit in, or a clock request and one.
constexpr milliseconds kCheckLimit{3000};
// So much longer when it does not answer because it has other things to say.
constexpr milliseconds kGrace{2000};
constexpr milliseconds kSearchInterval{1000};
// How long a command waits for an unplugged interface to come back.
constexpr milliseconds kPatience{8000};

constexpr int kOpened = 0;
constexpr int kPortUnusable = 1;
constexpr int kNoAnswer = 2;

constexpr int kSent = 0;
constexpr int kNotSent = 1;

constexpr std::size_t kLongestAddress = 20;  // of one that is none, whoever wrote it

constexpr std::string_view kStatusPrefix = "STATUS: ";

// Nothing, and the reason in `error`, when there is no such command.
std::optional<Command> make_command(const std::string& house, const std::string& unit, int function,
                                    double amount, std::string& error) {
  const bool house_wide =
      function == kX10AllUnitsOff || function == kX10AllLightsOn || function == kX10AllLightsOff;
  if (!house_wide && (function < kX10On || function > kX10Bright)) {
    error = "there is no such command";
    return std::nullopt;
  }
  auto address =
      house.size() == 1 ? parse_address(house + (house_wide ? "1" : unit)) : std::nullopt;
  if (!address) {
    error = "there is no such address";
    return std::nullopt;
  }
  if (house_wide) address->unit = 0;
  const bool dims = function == kX10Dim || function == kX10Bright;
  return Command(*address, function, dims ? dim_steps_from_percent(amount) : 0);
}

std::string address_text(const Heard& heard) {
  if (heard.unit != 0) return to_text({heard.house, heard.unit});
  return {static_cast<char>('A' + heard.house)};
}

}  // namespace

Driver::Driver(EventLoop& loop, ByteStream& stream)
    : loop_(loop),
      stream_(stream),
      handshake_([&loop] { return loop.local_time(); }),
      self_(std::make_shared<Driver*>(this)) {
  stream_.Received.connect([self = self_](std::string_view bytes) {
    if (*self) (*self)->received(bytes);
  });
  stream_.Lost.connect([self = self_] {
    if (*self) (*self)->lost();
  });
}

Driver::~Driver() {
  *self_ = nullptr;
  loop_.cancel(wake_);
  for (const auto call : posted_) loop_.cancel(call);
  for (const auto& waiting : queue_) waiting.completion->detach();
  if (opening_) opening_->detach();
  stream_.close();
}

Task<int> Driver::OpenInterface() {
  shut("the interface is being opened");
  open_port_ = port_;
  if (!stream_.open(open_port_)) co_return kPortUnusable;
  opening_ = std::make_shared<Completion>(loop_);
  Completion::Awaiter opened(opening_);
  begin_check(State::kOpening);
  pump();
  const int result = co_await opened;
  co_return result;
}

void Driver::NumericOption(int option) {
  // A CM11 reports every command it sees; there is nothing to tell it.
  if (trace_) trace_('#', "option " + std::to_string(option));
}

void Driver::ClientName(const std::string& name) {
  if (trace_) trace_('#', name + " on COM" + std::to_string(open_port_));
}

Task<bool> Driver::CloseInterface() {
  shut("the interface was closed");
  co_return true;
}

Task<int> Driver::SendX10(std::string house, std::string unit, int function, double amount,
                          int /*option1*/, int /*option2*/) {
  std::string error;
  auto command = make_command(house, unit, function, amount, error);
  if (command && state_ == State::kClosed) error = "no interface is open";
  const bool searched_long = state_ == State::kSearching || state_ == State::kChecking;
  if (command && searched_long && loop_.uptime() - lost_at_ >= kPatience)
    error = "the interface is unplugged";

  const auto completion = std::make_shared<Completion>(loop_);
  Completion::Awaiter ended(completion);
  if (!error.empty()) {
    const std::string name =
        on_one_line(house + unit, kLongestAddress) + " " + function_name(function);
    report(name + " could not be sent, " + error);
    post([completion] { completion->complete(kNotSent); });
  } else {
    queue_.push_back({*command, completion});
    pump();
  }
  const int result = co_await ended;
  co_return result;
}

void Driver::received(std::string_view bytes) {
  if (trace_) trace_('<', bytes);
  // One by one, so that a command gets its turn between two polls that come in one piece.
  for (const char byte : bytes) {
    if (!port_is_open()) return;
    handshake_.receive({&byte, 1}, loop_.uptime());
    pump();
  }
}

void Driver::lost() {
  if (!port_is_open()) return;
  if (trace_) trace_('#', "port lost");
  const bool unconfirmed = handshake_.reset();
  if (state_ == State::kOpening) {
    state_ = State::kClosed;
    give_up_all("the interface was unplugged");
    end_opening(kPortUnusable);
  } else if (state_ == State::kChecking) {
    state_ = State::kSearching;
  } else {
    state_ = State::kSearching;
    port_search_.emplace(open_port_, stream_.present_ports());
    candidates_.clear();
    lost_at_ = loop_.uptime();
    search_at_ = lost_at_ + kSearchInterval;
    report("Interface unplugged, looking for it");
    if (begun_) {
      begun_ = false;
      Command& command = queue_.front().command;
      if (command.line_lost(unconfirmed) == Command::Progress::kGivenUp)
        give_up_command("the interface was unplugged");
    }
  }
  pump();
}

// Everything that follows from a byte, a moment or a call: brings the state forward as far as it
// goes, writes what there is to write and asks to be called when the next deadline passes.
void Driver::pump() {
  handshake_.advance(loop_.uptime());
  for (const Heard& heard : handshake_.take_heard())
    post([this, heard] { CommandReceived(address_text(heard), heard.function); });
  if (const auto outcome = handshake_.take_outcome()) attempt_ended(*outcome);

  const bool unplugged = state_ == State::kSearching || state_ == State::kChecking;
  if (unplugged && loop_.uptime() - lost_at_ >= kPatience)
    give_up_all("the interface is unplugged");
  if (state_ == State::kSearching && loop_.uptime() >= search_at_) search();
  begin_next();

  const std::string output = handshake_.take_output();
  if (!output.empty()) {
    if (trace_) trace_('>', output);
    stream_.write(output);
  }
  arm();
}

void Driver::attempt_ended(Outcome outcome) {
  if (state_ == State::kOpening || state_ == State::kChecking) {
    check_ended(outcome);
  } else if (begun_) {
    command_ended(outcome);
  }
}

void Driver::check_ended(Outcome outcome) {
  if (outcome == Outcome::kDone) {
    const bool found_again = state_ == State::kChecking;
    state_ = State::kConnected;
    if (found_again && trace_) trace_('#', "found on COM" + std::to_string(open_port_));
    report("");
    end_opening(kOpened);
  } else if (loop_.uptime() >= check_until_ + (outcome == Outcome::kInterrupted ? kGrace : 0ms)) {
    stream_.close();
    handshake_.reset();
    if (state_ == State::kChecking) {
      state_ = State::kSearching;
      if (!candidates_.empty()) search_at_ = loop_.uptime();
    } else {
      state_ = State::kClosed;
      give_up_all("no interface answers");
      end_opening(kNoAnswer);
    }
  }
}

void Driver::command_ended(Outcome outcome) {
  begun_ = false;
  Command& command = queue_.front().command;
  switch (command.ended(outcome, loop_.uptime())) {
    case Command::Progress::kGoing:
      break;
    case Command::Progress::kSent:
      report("");
      end_command(kSent);
      break;
    case Command::Progress::kGivenUp:
      give_up_command(command.reason());
      break;
  }
}

void Driver::begin_next() {
  if (!handshake_.idle()) return;
  const auto now = loop_.uptime();
  if (state_ == State::kOpening || state_ == State::kChecking) {
    handshake_.request_status(now);
    return;
  }
  if (state_ != State::kConnected) return;
  // A command whose caller has gone is not begun, nor tried again.
  while (!queue_.empty() && queue_.front().completion->abandoned()) queue_.pop_front();
  if (queue_.empty()) return;
  Command& command = queue_.front().command;
  handshake_.transmit(command.next(handshake_.listeners(), now), now);
  begun_ = true;
}

void Driver::begin_check(State state) {
  state_ = state;
  handshake_.reset();
  check_until_ = loop_.uptime() + kCheckLimit;
}

// Goes through this second's candidates; the first that can be opened is asked for its status.
void Driver::search() {
  search_at_ = loop_.uptime() + kSearchInterval;
  if (candidates_.empty()) candidates_ = port_search_->candidates(stream_.present_ports());
  while (!candidates_.empty()) {
    const int port = candidates_.front();
    candidates_.erase(candidates_.begin());
    if (!stream_.open(port)) continue;
    open_port_ = port;
    begin_check(State::kChecking);
    return;
  }
}

void Driver::arm() {
  auto next = handshake_.deadline();
  const auto consider = [&next](Milliseconds at) { next = next ? std::min(*next, at) : at; };
  if (state_ == State::kSearching) consider(search_at_);
  const bool unplugged = state_ == State::kSearching || state_ == State::kChecking;
  if (unplugged && !queue_.empty()) consider(lost_at_ + kPatience);
  if (next == wake_at_) return;
  loop_.cancel(wake_);
  wake_at_ = next;
  if (!next) return;
  wake_ = loop_.call_after(*next - loop_.uptime(), [this] {
    wake_at_.reset();
    pump();
  });
}

void Driver::end_opening(int result) {
  if (const auto opening = std::exchange(opening_, nullptr)) opening->complete(result);
}

void Driver::end_command(int result) {
  queue_.front().completion->complete(result);
  queue_.pop_front();
}

void Driver::give_up_command(const std::string& reason) {
  if (!queue_.front().completion->abandoned()) report(queue_.front().command.failure(reason));
  end_command(kNotSent);
}

void Driver::give_up_all(const std::string& reason) {
  while (!queue_.empty()) give_up_command(reason);
  begun_ = false;
}

void Driver::shut(const std::string& reason) {
  stream_.close();
  handshake_.reset();
  state_ = State::kClosed;
  give_up_all(reason);
  end_opening(kPortUnusable);
  port_search_.reset();
  arm();
}

void Driver::report(const std::string& trouble) {
  if (trouble.empty() && trouble_.empty()) return;
  trouble_ = trouble.empty() ? "" : std::string(kStatusPrefix) + trouble;
  post([this, text = trouble_] { TroubleChanged(text); });
}

void Driver::post(std::function<void()> outward) {
  // The id is only known once the call has been asked for, and the call never comes before that.
  const auto id = std::make_shared<EventLoop::CallId>(0);
  *id = loop_.call_after(milliseconds(0), [this, id, outward = std::move(outward)] {
    posted_.erase(*id);
    outward();
  });
  posted_.insert(*id);
}

}  // namespace homewarden::cm11
