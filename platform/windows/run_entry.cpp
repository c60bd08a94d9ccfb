#include "platform/windows/run_entry.h"

#include <utility>

namespace homewarden::windows {
namespace {

void write(Registry& registry, const std::string& text) {
  registry.write(RegistryRoot::kLocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run",
                 "Homewarden", {RegistryType::kString, text});
}

}  // namespace

RunEntry::RunEntry(Registry& registry, std::string application_folder)
    : registry_(registry), application_folder_(std::move(application_folder)) {}

// This name, whatever the running program is called.
bool RunEntry::fill() {
  write(registry_, application_folder_ + "\\homewarden.exe");
  return true;
}

bool RunEntry::clear() {
  write(registry_, "");
  return true;
}

}  // namespace homewarden::windows
