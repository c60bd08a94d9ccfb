#pragma once

#include "ui/controls.h"
#include "ui/event_panel.h"
#include "ui/finder_panel.h"
#include "ui/first_run_panel.h"
#include "ui/home_panel.h"
#include "ui/house_panel.h"
#include "ui/interface_panel.h"
#include "ui/macro_panel.h"
#include "ui/message_panel.h"
#include "ui/navigation_pane.h"
#include "ui/panel_stack.h"
#include "ui/program_menu.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"

namespace homewarden {

// The main window: the navigation tree on its left side, a stack of panels on its right of which
// one is shown at a time, the status bar at its foot; and the state that the operations share.
// Whoever works on a part of it takes that part.
struct FrmMain : Window,
                 NavigationPane,
                 HomePanel,
                 OptionsPanel,
                 InterfacePanel,
                 FirstRunPanel,
                 HousePanel,
                 AddRoomPanel,
                 AddDevicePanel,
                 EventPanel,
                 MacroPanel,
                 FinderPanel,
                 WebPanel,
                 ProfilePanel,
                 SpeechPanel,
                 MessagePanel,
                 PanelStack,
                 ProgramMenu,
                 HiddenLists,
                 ProgramTimers,
                 Flags,
                 SunTimes,
                 OnceRemoval {
  FrmMain();

  StatusBar Statusbar;
};

}  // namespace homewarden
