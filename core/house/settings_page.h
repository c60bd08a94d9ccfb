#pragma once

#include <filesystem>

#include "core/notices.h"
#include "platform/desktop.h"
#include "ui/controls.h"
#include "ui/home_panel.h"
#include "ui/panel_stack.h"
#include "ui/tree_view.h"

namespace homewarden {

// The settings page: the gear that shows it, and the folder of the data files. To be called once.
void join_settings_page(OptionsPanel& options, PanelStack& panels, TreeView& tree,
                        StatusBar& status, Notices& notices, Desktop& desktop,
                        std::filesystem::path folder);

}  // namespace homewarden
