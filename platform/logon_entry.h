#pragma once

namespace homewarden {

// The entry of this program among those that start when the person logs on.
class LogonEntry {
 public:
  virtual ~LogonEntry() = default;

  // False where nothing starts at logon, or this run must not be started again: then it is not
  // offered, and the calls do nothing.
  virtual bool is_available() const = 0;

  // Whether there is an entry that somebody has switched off by the system's own means. Filling it
  // switches it on again.
  virtual bool is_switched_off() = 0;

  // False when the entry could not be written.
  virtual bool fill() = 0;
  // Leaves an entry that starts nothing. False when it could not be written.
  virtual bool clear() = 0;
};

}  // namespace homewarden
