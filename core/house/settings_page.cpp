#include "core/house/settings_page.h"

#include <utility>

#include "base/code_page.h"

namespace homewarden {
namespace {

constexpr const char* kLists[] = {"rmlst.hwd", "evelst.hwd", "macs.hlk"};

bool is_plain(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= '0' && byte <= '9') || byte == '/' || byte == '.' || byte == '-' || byte == '_';
}

// As an address for whatever shows folders.
std::string address_of(const std::filesystem::path& folder) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string address = "file://";
  for (const char letter : folder.string()) {
    const auto byte = static_cast<unsigned char>(letter);
    if (is_plain(letter))
      address += letter;
    else
      address += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return address;
}

}  // namespace

void join_settings_page(OptionsPanel& options, PanelStack& panels, TreeView& tree,
                        StatusBar& status, Notices& notices, Desktop& desktop,
                        std::filesystem::path folder) {
  options.cmd_settings.click.connect([&options, &panels, &tree] {
    tree.selected = nullptr;
    panels.show_only(options.frm_settings);
  });
  options.cmd_folder.click.connect([&status, &desktop, folder = std::move(folder)] {
    if (!desktop.open_address(address_of(folder)))
      status.panel2 = "The data files lie in " + from_utf8(folder.string());
  });
  notices.changed.connect([&options, &notices](const std::string&, const std::string&) {
    std::string wrong;
    for (const char* list : kLists)
      if (wrong.empty()) wrong = notices.of(list);
    options.lab_files.caption = wrong.empty() ? "All files could be read" : wrong;
  });
}

}  // namespace homewarden
