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

// Removes what the demo keeps, the whole folder, unless one runs. What cannot be removed stays,
// without a word.
void remove_demo(const os_linux::Folders& folders);

// Writes the rooms, devices, events and settings of the demo, unless there is a room list already:
// what a person changed stays.
void furnish_demo(const os_linux::Folders& folders, Files& files, Registry& registry);

// The modules that stand in the demo house, one for each of its devices.
emulator::Options demo_modules();

}  // namespace homewarden
