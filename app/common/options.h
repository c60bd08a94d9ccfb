#pragma once

#include <QStringList>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/qt/time_lapse.h"

namespace homewarden {

// What the command line asks for.
struct AppOptions {
  std::optional<std::filesystem::path> folder;  // the application folder
  bool demo = false;
  bool demo_reset = false;
  bool trace_serial = false;
  bool report_loop = false;  // print how long the event loop is busy without a break
  bool supervise = false;    // start the service, and start it again when it fails
  std::optional<std::chrono::seconds> stop_limit;  // for a supervised service that will not end
  // HOMEWARDEN_TIME_LAPSE: tests and measurements have not got hours.
  qt::TimeLapse time_lapse;
  bool report_start = false;  // print when the window was first painted and how much memory it took
};

// What a program offers: the window more than the service.
enum class Face { kWindow, kNone };

// Prints help or the version, or what is wrong with the arguments, and ends the program where the
// arguments say so.
AppOptions parse_options(const QStringList& arguments, Face face);

}  // namespace homewarden
