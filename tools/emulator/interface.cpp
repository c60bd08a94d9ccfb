#include "tools/emulator/interface.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "platform/interface_control.h"

namespace homewarden::emulator {

using std::chrono::milliseconds;

namespace {

// Bits of a transmission's header.
constexpr int kHeaderMark = 0x04;
constexpr int kHeaderFunction = 0x02;
constexpr int kHeaderExtended = 0x01;

constexpr std::size_t kShortBytes = 2;
constexpr std::size_t kExtendedBytes = 5;
constexpr std::size_t kClockBytes = 7;
constexpr std::size_t kMemoryBytes = 3 + MacroMemory::kBlock;  // header and address before the data
constexpr std::size_t kRingBytes = 1;

constexpr std::uint8_t kMemoryHeader = 0xFB;
constexpr std::uint8_t kRingOn = 0xEB;
constexpr std::uint8_t kRingOff = 0xDB;

// How long the computer may take for the next byte of what it has begun, and for its 00.
constexpr milliseconds kByteLimit{500};
constexpr milliseconds kAcknowledgeLimit{3000};

// Requests that are not answered come again after a second, but however fast the emulator runs,
// not faster than a computer can read them.
constexpr Microseconds kRepeatTime = std::chrono::seconds(1);
constexpr Microseconds kShortestRepeatTime = milliseconds(20);

constexpr milliseconds kLate{2000};
constexpr milliseconds kVeryLate{12000};

// A block of memory, at ten milliseconds a byte.
constexpr Microseconds kProgramTime = milliseconds(10 * MacroMemory::kBlock);

Microseconds repeat_time(double speed) {
  if (speed <= 0) return kShortestRepeatTime;
  return std::max(std::chrono::round<Microseconds>(kRepeatTime / speed), kShortestRepeatTime);
}

std::uint8_t sum(std::string_view bytes) {
  return static_cast<std::uint8_t>(std::accumulate(
      bytes.begin(), bytes.end(), 0U,
      [](unsigned total, char byte) { return total + static_cast<std::uint8_t>(byte); }));
}

// Those that begin something else than a transmission, and how much of it there is; 0 for others.
std::size_t length_of(std::uint8_t header) {
  switch (header) {
    case cm11::kClockHeader:
      return kClockBytes;
    case kMemoryHeader:
      return kMemoryBytes;
    case kRingOn:
    case kRingOff:
      return kRingBytes;
    default:
      return 0;
  }
}

Transmission parse(std::string_view bytes) {
  const auto header = static_cast<std::uint8_t>(bytes[0]);
  const auto code = static_cast<std::uint8_t>(bytes[1]);
  Transmission result;
  result.house = cm11::line_index(code >> 4);
  result.function = (header & kHeaderFunction) != 0;
  result.code = result.function ? code & 0x0F : cm11::line_index(code & 0x0F) + 1;
  // The amount means nothing with anything else; programs set it to get another checksum.
  if (result.function && (result.code == kX10Dim || result.code == kX10Bright))
    result.steps = header >> 3;
  result.extended = bytes.substr(kShortBytes);
  return result;
}

}  // namespace

Interface::Interface(Agenda& agenda, PowerLine& line, SerialLine& serial, FaultBox& faults,
                     double speed)
    : agenda_(agenda),
      line_(line),
      serial_(serial),
      faults_(faults),
      repeat_time_(repeat_time(speed)),
      status_(agenda),
      program_time_(speed <= 0 ? Microseconds(0)
                               : std::chrono::round<Microseconds>(kProgramTime / speed)) {}

void Interface::receive(std::uint8_t byte) {
  if (!hears_computer()) return;
  if (polls_) {
    if (byte == cm11::kPollAnswer) answer_poll();
    return;
  }
  switch (state_) {
    case State::kCollecting:
      collect(byte);
      break;
    case State::kAwaitingAcknowledge:
      if (byte == cm11::kAcknowledge) {
        acknowledged();
      } else {
        // The checksum was wrong, or the computer has given up: this may be a new header.
        become_idle();
        if (!polls_) begin(byte);
      }
      break;
    default:
      begin(byte);
  }
}

void Interface::begin(std::uint8_t byte) {
  expected_ = length_of(byte);
  if (wants_clock_ && byte != cm11::kClockHeader) return;
  if (byte == cm11::kStatusRequest) {
    send(status_.bytes());
    return;
  }
  if (expected_ == 0) {
    if ((byte & kHeaderMark) == 0 || line_.remote_holds()) return;
    expected_ = (byte & kHeaderExtended) != 0 ? kExtendedBytes : kShortBytes;
  }
  state_ = State::kCollecting;
  checksum_before_poll_ = false;
  collected_.clear();
  collect(byte);
}

void Interface::collect(std::uint8_t byte) {
  collected_ += static_cast<char>(byte);
  limit_wait(kByteLimit);
  if (collected_.size() == expected_) answer();
}

void Interface::answer() {
  if (length_of(header()) == 0) return answer_header();
  if (collecting_clock() && faults_.strikes(Fault::kNoClockChecksum)) return set_clock();
  send_checksum();
  state_ = State::kAwaitingAcknowledge;
  limit_wait(kAcknowledgeLimit);
}

void Interface::answer_header() {
  transmission_ = parse(collected_);
  if (faults_.strikes(Fault::kClockRequest)) {
    fail_power();
  } else if (faults_.strikes(Fault::kPollBeforeChecksum)) {
    interrupt();
  } else if (faults_.strikes(Fault::kPollAfterChecksum)) {
    interrupt();
    checksum_before_poll_ = true;
  } else {
    send_checksum();
    state_ = State::kAwaitingAcknowledge;
    limit_wait(kAcknowledgeLimit);
  }
}

void Interface::send_checksum() {
  // The headers of a clock setting and of a block of memory are not in their sums.
  const std::size_t first = collecting_clock() || header() == kMemoryHeader ? 1 : 0;
  int checksum = sum(std::string_view(collected_).substr(first));
  if (faults_.strikes(Fault::kWrongChecksum)) checksum += 1 + faults_.random(255);
  send(static_cast<std::uint8_t>(checksum));
}

void Interface::acknowledged() {
  if (collecting_clock()) {
    send(cm11::kReady);
    set_clock();
    return;
  }
  if (header() == kMemoryHeader) return program_memory();
  if (length_of(header()) == kRingBytes) return switch_ring();
  state_ = State::kTransmitting;
  agenda_.cancel(wait_limit_);
  if (faults_.strikes(Fault::kCollision))
    line_.collide(transmission_, [this] { become_idle(); });
  else
    line_.send(transmission_, [this] { transmitted(); });
}

void Interface::transmitted() {
  if (wants_clock_ || faults_.strikes(Fault::kMissingReady))
    become_idle();
  else if (faults_.strikes(Fault::kLateReady))
    agenda_.after(kLate, [this] { ready(); });
  else if (faults_.strikes(Fault::kVeryLateReady))
    agenda_.after(kVeryLate, [this] { ready(); });
  else
    ready();
}

void Interface::ready() {
  if (!wants_clock_) {
    send(cm11::kReady);
    if (faults_.strikes(Fault::kMacroNotice)) {
      // The macro's place in the memory of the interface.
      send(cm11::kMacroNotice);
      send(static_cast<std::uint8_t>(faults_.random(4)));
      send(static_cast<std::uint8_t>(faults_.random(80)));
    }
    if (!transmission_.function && faults_.strikes(Fault::kPollBeforeFunction)) interrupt();
  }
  become_idle();
}

void Interface::program_memory() {
  state_ = State::kProgramming;
  agenda_.cancel(wait_limit_);
  const std::string report = memory_.write(std::string_view(collected_).substr(1));
  if (on_report) on_report(report);
  agenda_.after(program_time_, [this] {
    if (!wants_clock_) send(cm11::kReady);
    become_idle();
  });
}

void Interface::switch_ring() {
  if (on_report) on_report(header() == kRingOn ? "ring line: on" : "ring line: off");
  send(cm11::kReady);
  become_idle();
}

void Interface::set_clock() {
  status_.set_clock(std::string_view(collected_).substr(1));
  wants_clock_ = false;
  agenda_.cancel(clock_timer_);
  become_idle();
}

void Interface::become_idle() {
  state_ = State::kIdle;
  agenda_.cancel(wait_limit_);
  poll_if_needed();
}

// What the computer has begun and does not go on with must not keep the interface for ever.
void Interface::limit_wait(milliseconds limit) {
  agenda_.cancel(wait_limit_);
  wait_limit_ = agenda_.after(limit, [this] { become_idle(); });
}

void Interface::remote_begins() {
  const bool open = state_ == State::kCollecting || state_ == State::kAwaitingAcknowledge;
  if (open && !collecting_clock()) become_idle();
}

void Interface::hear(const Transmission& what, bool from_remote) {
  status_.hear(what);
  if (!from_remote) return;  // what the computer sent it need not be told
  buffer_.add(what);
  if (checksum_before_poll_) send_checksum();
  checksum_before_poll_ = false;
  poll_if_needed();
}

void Interface::poll_if_needed() {
  if (state_ != State::kIdle || polls_ || wants_clock_ || buffer_.empty()) return;
  polls_ = true;
  repeat_poll();
}

void Interface::repeat_poll() {
  send(cm11::kPoll);
  poll_timer_ = agenda_.after(repeat_time_, [this] { repeat_poll(); });
}

void Interface::answer_poll() {
  if (faults_.strikes(Fault::kLostPollAnswer)) return;
  polls_ = false;
  agenda_.cancel(poll_timer_);
  Upload upload;
  upload.time = std::chrono::floor<milliseconds>(agenda_.now());
  upload.bytes = buffer_.take();
  upload.damaged = !send(upload.bytes);
  uploads_.push_back(upload);
}

void Interface::fail_power() {
  status_.count_battery_minute();
  polls_ = false;
  checksum_before_poll_ = false;
  agenda_.cancel(poll_timer_);
  wants_clock_ = true;
  // What goes out on the power line, or into the memory, is not called back; nothing is answered at
  // its end.
  if (hears_computer()) become_idle();
  agenda_.cancel(clock_timer_);
  repeat_clock_request();
}

void Interface::repeat_clock_request() {
  // Not into the setting of the clock itself.
  if (state_ == State::kIdle || !hears_computer()) send(cm11::kClockRequest);
  clock_timer_ = agenda_.after(repeat_time_, [this] { repeat_clock_request(); });
}

// Another controller of the house that the computer is busy with, whose keys are pressed at the
// wrong moment: an address, an address and a function, or a function for what is addressed.
void Interface::interrupt() {
  std::vector<Transmission> keys;
  const int kind = faults_.random(3);
  if (kind != 2) keys.push_back({transmission_.house, false, 1 + faults_.random(16), 0, {}});
  if (kind != 0) {
    constexpr std::array kFunctions = {kX10On, kX10Off, kX10Dim, kX10Bright};
    const int function = kFunctions[static_cast<std::size_t>(faults_.random(4))];
    const bool dims = function == kX10Dim || function == kX10Bright;
    keys.push_back({transmission_.house, true, function, dims ? 1 + faults_.random(5) : 0, {}});
  }
  line_.send_remote(std::move(keys));
}

}  // namespace homewarden::emulator
