#include "tools/emulator/report.h"

#include <array>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

constexpr std::array<std::string_view, 16> kFunctionNames = {"All Units Off",
                                                             "All Lights On",
                                                             "On",
                                                             "Off",
                                                             "Dim",
                                                             "Bright",
                                                             "All Lights Off",
                                                             "Extended Code",
                                                             "Hail Request",
                                                             "Hail Acknowledge",
                                                             "Pre-set Dim 1",
                                                             "Pre-set Dim 2",
                                                             "Extended Data",
                                                             "Status On",
                                                             "Status Off",
                                                             "Status Request"};

}  // namespace

std::string_view function_name(int function) {
  return kFunctionNames[static_cast<std::size_t>(function)];
}

std::vector<std::string> describe(const Transmission& what, bool from_remote,
                                  const std::vector<cm11::Address>& meant, const Modules& modules) {
  if (!what.function) return {};
  std::string function(function_name(what.code));
  if (what.code == kX10Dim || what.code == kX10Bright)
    function += " " + std::to_string(what.steps) + "/" + std::to_string(cm11::kDimSteps);
  const std::string sender = from_remote ? " (remote)" : "";

  std::vector<std::string> lines;
  for (const auto& address : meant)
    lines.push_back(cm11::to_text(address) + " " + function + ": " + modules.at(address).text() +
                    sender);
  if (lines.empty()) {
    const std::string house(1, static_cast<char>('A' + what.house));
    const char* const why = what.extended.empty() ? "no module listens" : "no module knows it";
    lines.push_back(house + " " + function + ": " + why + sender);
  }
  return lines;
}

}  // namespace homewarden::emulator
