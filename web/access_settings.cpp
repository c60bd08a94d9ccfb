#include "web/access_settings.h"

#include <utility>
#include <vector>

#include "base/text.h"
#include "core/asking.h"

namespace homewarden {
namespace {

const std::string kSection = "data";
constexpr std::size_t kLongestEntry = 60;
constexpr std::size_t kMostTold = 5;

// Entries separated by blanks, commas or semicolons, or by the ends of lines that were pasted.
std::vector<std::string> entries_in(const std::string& text) {
  std::vector<std::string> entries;
  std::string entry;
  for (const char c : text + " ") {
    if (static_cast<unsigned char>(c) > ' ' && c != ',' && c != ';') {
      entry += c;
    } else if (!entry.empty()) {
      entries.push_back(std::exchange(entry, {}));
    }
  }
  return entries;
}

std::string listed(const std::vector<std::string>& entries) {
  std::string text;
  for (std::size_t i = 0; i < entries.size() && i < kMostTold; ++i)
    text += (i == 0 ? "" : ", ") + on_one_line(entries[i], kLongestEntry);
  if (entries.size() > kMostTold)
    text += " and " + std::to_string(entries.size() - kMostTold) + " more";
  return text;
}

}  // namespace

AccessSettings::AccessSettings(WebPanel& panel, Settings& settings, Dialogs& dialogs,
                               WebServerControl& web)
    : panel_(panel), settings_(settings), dialogs_(dialogs), web_(web) {}

WebAccess AccessSettings::stored() const {
  const auto entries = [this](const char* key) {
    return entries_in(settings_.read(kSection, key, ""));
  };
  return {entries("webhosts"), entries("weborigins"), entries("webproxies"),
          settings_.read(kSection, "webshared", "0") == "1"};
}

void AccessSettings::show() {
  panel_.txt_webhosts.text = settings_.read(kSection, "webhosts", "");
  panel_.txt_weborigins.text = settings_.read(kSection, "weborigins", "");
  panel_.txt_webproxies.text = settings_.read(kSection, "webproxies", "");
  panel_.chk_webshared.checked = settings_.read(kSection, "webshared", "0") == "1";
}

std::string AccessSettings::faults() const {
  const auto faults = web_.AccessFaults(stored());
  return faults.empty() ? "" : "These entries are not understood and left out: " + listed(faults);
}

Task<bool> AccessSettings::store() {
  const WebAccess typed{entries_in(panel_.txt_webhosts.text),
                        entries_in(panel_.txt_weborigins.text),
                        entries_in(panel_.txt_webproxies.text), panel_.chk_webshared.checked};
  const auto faults = web_.AccessFaults(typed);
  if (!faults.empty()) {
    co_await tell_error(
        dialogs_,
        "Sorry, this is not understood: " + listed(faults) +
            ". A name is written like house.example.org, a page of somebody else's like "
            "http://dashboard.lan:3000, a proxy like 192.168.1.2 or 10.0.0.0/8. Nothing has been "
            "saved.");
    co_return false;
  }
  settings_.write(kSection, "webhosts", panel_.txt_webhosts.text);
  settings_.write(kSection, "weborigins", panel_.txt_weborigins.text);
  settings_.write(kSection, "webproxies", panel_.txt_webproxies.text);
  settings_.write(kSection, "webshared", typed.shared_addresses ? "1" : "0");
  co_return true;
}

}  // namespace homewarden
