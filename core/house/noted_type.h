#pragma once

#include <string>

#include "core/devices.h"
#include "core/list_file.h"
#include "core/settings.h"

namespace homewarden {

// The type that a device gets together with another address. The key under which types are recorded
// stays, so it cannot be recorded before the list decides; it is noted, and a stop between the two
// is made good by settle_type().
void note_type(Settings& settings, const Device& device, const std::string& type);
void forget_noted_type(Settings& settings);

// Records the type that is noted when the list has the device with its new address, and forgets it.
// While the list cannot be read it stays noted.
void settle_type(Settings& settings, ListFile& rooms);

}  // namespace homewarden
