#include "core/settings.h"

namespace homewarden {
namespace {

std::string section_key(const std::string& section) {
  return "Software\\Homewarden\\" + section;
}

}  // namespace

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
