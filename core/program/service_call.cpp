#include "core/program/service_call.h"

#include <charconv>
#include <cstdlib>

#include "core/dates.h"

namespace homewarden {
namespace {

const std::string kKey = kMachineKey + "\\Service";
const char* const kName = "asked";
// It waits for the house, and a person may have asked for the delay.
constexpr long kStart = 2;  // minutes

}  // namespace

void ServiceCall::answered() {
  if (!module1_.regread(RegistryRoot::kLocalMachine, kKey, kName).empty()) write("");
}

bool ServiceCall::was_in_vain() {
  const std::string text = module1_.regread(RegistryRoot::kLocalMachine, kKey, kName);
  long made = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), made);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return false;
  answered();
  return std::labs(minute() - made) >= kStart;
}

long ServiceCall::minute() const {
  return static_cast<long>(minute_of(clock_.local_time()).time_since_epoch().count());
}

void ServiceCall::write(const std::string& text) {
  module1_.regwrite(RegistryRoot::kLocalMachine, kKey, kName, text);
}

}  // namespace homewarden
