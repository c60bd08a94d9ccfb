#include "tools/emulator/faults.h"

namespace homewarden::emulator {

namespace {

struct Entry {
  std::string_view name;
  std::string_view description;
};

// In the order of Fault.
constexpr std::array<Entry, kFaultCount> kEntries = {{
    {"wrong-checksum", "a checksum is answered that is not the sum"},
    {"lost-byte", "a byte to the computer does not arrive"},
    {"lost-byte-from-computer", "a byte from the computer does not arrive"},
    {"doubled-byte", "a byte to the computer arrives twice"},
    {"changed-byte", "a byte to the computer arrives with one bit changed"},
    {"changed-byte-from-computer", "a byte from the computer arrives with one bit changed"},
    {"noise", "a byte that nobody sent arrives before one to the computer"},
    {"poll-before-checksum", "a remote is heard and polled for instead of the checksum"},
    {"poll-after-checksum", "a remote is heard and polled for right after the checksum"},
    {"poll-before-function", "a remote of the same house comes between address and function"},
    {"clock-request", "power fails instead of the checksum"},
    {"late-ready", "ready comes 2 s late"},
    {"very-late-ready", "ready comes 12 s late"},
    {"missing-ready", "the command goes out but ready never comes"},
    {"collision", "the command is lost on the power line and ready never comes"},
    {"lost-poll-answer", "the interface overlooks the answer to its poll"},
    {"no-clock-checksum", "the clock is taken without any answer"},
    {"macro-notice", "a stored macro runs and is told of after ready"},
}};

}  // namespace

std::string_view to_text(Fault fault) {
  return kEntries[static_cast<std::size_t>(fault)].name;
}

std::string_view description(Fault fault) {
  return kEntries[static_cast<std::size_t>(fault)].description;
}

std::optional<Fault> parse_fault(std::string_view name) {
  for (int i = 0; i < kFaultCount; ++i)
    if (to_text(fault_at(i)) == name) return fault_at(i);
  return std::nullopt;
}

Fault fault_at(int index) {
  return static_cast<Fault>(index);
}

FaultBox::FaultBox(std::uint32_t seed) : dice_(seed) {}

void FaultBox::inject(Fault fault, int count) {
  at(fault).pending += count;
}

void FaultBox::set_probability(Fault fault, double probability) {
  at(fault).probability = probability;
}

void FaultBox::set_all_probabilities(double probability) {
  for (auto& setting : settings_) setting.probability = probability;
}

void FaultBox::clear() {
  for (auto& setting : settings_) {
    setting.pending = 0;
    setting.probability = 0;
  }
}

bool FaultBox::strikes(Fault fault) {
  auto& setting = at(fault);
  if (setting.pending > 0) {
    --setting.pending;
  } else {
    // No dice without need: a fault that is never asked for does not change the course of others.
    if (setting.probability <= 0) return false;
    const double thrown = static_cast<double>(dice_()) / static_cast<double>(dice_.max());
    if (thrown >= setting.probability) return false;
  }
  ++setting.happened;
  if (on_strike) on_strike(fault);
  return true;
}

int FaultBox::random(int limit) {
  return static_cast<int>(dice_() % static_cast<std::uint32_t>(limit));
}

}  // namespace homewarden::emulator
