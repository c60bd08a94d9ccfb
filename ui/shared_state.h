#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/date.h"
#include "ui/controls.h"

namespace homewarden {

// What the operations of the main window share besides its panels.

struct Flags {
  bool skipdelay = false;     // ends the start-up delay at its next second
  bool ignoreclicks = false;  // minimising and restoring the window does nothing
  bool formloading = false;   // daylight saving, city and profile do nothing
  bool filebusy = false;      // an operation works on the data files
  // A device command waits for the line, is being sent or was sent less than a second ago.
  bool sending = false;
  // The interface has been found. Stays true when it is unplugged later, until a search for it at
  // the stored port fails.
  Property<bool> connected{false};
};

// Today's sun times on the wall clock, which may fall on the day before or after; nothing until
// they could be computed.
struct SunTimes {
  std::optional<Date> sunrise_time;
  std::optional<Date> sunset_time;
};

// Keys of once-events waiting for removal; "" is a free slot.
struct OnceRemoval {
  static constexpr int kOnceSlots = 11;  // entries in use
  std::array<std::string, 51> once_removal;
};

// What nobody sees: the lines of the room list, the addresses of its devices, the commands that
// macros have queued (x10/command_queue.h), the picture of the icon.
struct HiddenLists {
  ListBox lst_rooms{true};
  ListBox lst_codes;
  TextBox txt_queue;
  Picture imgicon;
};

struct ProgramTimers {
  Timer startuptimer{500, false};
  Timer timerqueue{2000, true};
  Timer timerdelete{10000, false};
  Timer timetimer{0, true};
  Timer eventtimer{0, true, Timer::Start::kWholeMinute};
  Timer timerhide{0, true};
  Timer statetimer{1000, true};  // looks whether another process has recorded something
};

}  // namespace homewarden
