#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace homewarden::emulator {

// What can go wrong between a computer and the modules; docs/emulator.md says what each one does.
enum class Fault {
  kWrongChecksum,
  kLostByteToComputer,
  kLostByteFromComputer,
  kDoubledByte,
  kChangedByte,
  kChangedByteFromComputer,
  kNoise,
  kPollBeforeChecksum,
  kPollAfterChecksum,
  kPollBeforeFunction,
  kClockRequest,
  kLateReady,
  kVeryLateReady,
  kMissingReady,
  kCollision,
  kLostPollAnswer,
  kNoClockChecksum,
  kMacroNotice,
};

inline constexpr int kFaultCount = 18;

// The name on the console: "wrong-checksum".
std::string_view to_text(Fault fault);

// One line on what the fault does.
std::string_view description(Fault fault);

// Nothing unless it is exactly the name of one.
std::optional<Fault> parse_fault(std::string_view name);

// All faults, for loops: 0 to kFaultCount - 1.
Fault fault_at(int index);

// Decides when things go wrong. All dice are thrown here: the same seed and the same course of
// events give the same faults.
class FaultBox {
 public:
  explicit FaultBox(std::uint32_t seed);

  // It happens at the next `count` occasions, on top of those still to come. Probabilities do not
  // count at these.
  void inject(Fault fault, int count = 1);

  // From now on it happens at each occasion with this probability, 0 to 1.
  void set_probability(Fault fault, double probability);
  void set_all_probabilities(double probability);

  // Nothing goes wrong any more; how often it happened is still known.
  void clear();

  int pending(Fault fault) const { return at(fault).pending; }
  double probability(Fault fault) const { return at(fault).probability; }

  // How often it has happened.
  int happened(Fault fault) const { return at(fault).happened; }

  // Asked at each occasion: does it happen now?
  bool strikes(Fault fault);

  // Evenly from 0 to limit - 1; the limit is at least 1.
  int random(int limit);

  // Told of each fault that happens.
  std::function<void(Fault)> on_strike;

 private:
  struct Setting {
    int pending = 0;
    double probability = 0;
    int happened = 0;
  };

  const Setting& at(Fault fault) const { return settings_[static_cast<std::size_t>(fault)]; }
  Setting& at(Fault fault) { return settings_[static_cast<std::size_t>(fault)]; }

  std::array<Setting, kFaultCount> settings_;
  std::mt19937 dice_;
};

}  // namespace homewarden::emulator
