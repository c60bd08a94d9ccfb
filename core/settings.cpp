#include "core/settings.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace homewarden {
namespace {

std::string section_key(const std::string& section) {
  return "Software\\Homewarden\\" + section;
}

constexpr std::string_view kProgramValues[] = {"port",        "webport",  "installing",
                                               "closeengine", "lastroom", "lastdev"};

}  // namespace

bool is_program_value(std::string_view name) {
  return std::any_of(std::begin(kProgramValues), std::end(kProgramValues),
                     [name](std::string_view value) { return equals_ignoring_case(name, value); });
}

std::string Settings::read(const std::string& section, const std::string& key,
                           const std::string& default_text) const {
  const auto value = registry_.read(RegistryRoot::kCurrentUser, section_key(section), key);
  if (!value || value->type != RegistryType::kString) return default_text;
  return value->data;
}

void Settings::write(const std::string& section, const std::string& key, const std::string& text) {
  registry_.write(RegistryRoot::kCurrentUser, section_key(section), key,
                  RegistryValue{RegistryType::kString, text});
}

void Settings::remove(const std::string& section, const std::string& key) {
  registry_.remove(RegistryRoot::kCurrentUser, section_key(section), key);
}

}  // namespace homewarden
