#pragma once

#include <filesystem>
#include <optional>

namespace homewarden::os_linux {

// Where things lie.
struct Folders {
  std::filesystem::path application;  // data files, html/, sounds
  std::filesystem::path machine;      // settings that the background service sees too, ports/
  std::filesystem::path user;         // settings of the person
};

// The folders of the running program. The machine-wide one is $HOMEWARDEN_MACHINE_DIR, else
// /var/lib/homewarden where the person may write there, else homewarden in the person's state
// folder; the person's is $HOMEWARDEN_USER_DIR, else homewarden in the configuration folder. The
// application folder is the one given, else the folder of the program when a house lies there,
// else homewarden in the person's data folder.
Folders find_folders(const std::optional<std::filesystem::path>& application_folder);

// Brings the pages, pictures and sounds that were installed or built with the program into the
// application folder, see bring_installed_files(). A folder of pages whose name is not "html" but
// in other letter case is renamed. False when the folder cannot be written.
bool fill_application_folder(const std::filesystem::path& folder);

// $XDG_CONFIG_HOME or ~/.config, below the folder for temporary files when there is no $HOME.
std::filesystem::path config_home();
// $XDG_DATA_HOME or ~/.local/share, below the folder for temporary files when there is no $HOME.
std::filesystem::path data_home();

// The file of the running program. "" when it cannot be told.
std::filesystem::path program_file();

}  // namespace homewarden::os_linux
