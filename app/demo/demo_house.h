#pragma once

#include "platform/files.h"
#include "platform/linux/folders.h"
#include "platform/registry.h"
#include "tools/emulator/emulator.h"

namespace homewarden {

// The COM port at whose name the demo's interface is linked.
inline constexpr int kDemoPort = 2;

// Where the demo keeps its files and settings, apart from those of a real house.
os_linux::Folders demo_folders();

// Removes what the demo keeps.
void remove_demo(const os_linux::Folders& folders);

// Writes the rooms, devices and settings of the demo where they are missing.
void furnish_demo(const os_linux::Folders& folders, Files& files, Registry& registry);

// The modules that stand in the demo house.
emulator::Options demo_modules();

}  // namespace homewarden
