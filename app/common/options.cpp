#include "app/common/options.h"

#include <QCommandLineParser>
#include <QFile>
#include <cstdlib>

#include "app/common/standard_output.h"
#include "core/version.h"

namespace homewarden {
namespace {

constexpr const char* kTimeLapse = "HOMEWARDEN_TIME_LAPSE";

qt::TimeLapse time_lapse() {
  const char* text = std::getenv(kTimeLapse);
  if (!text || !*text) return {};
  if (const auto lapse = qt::parse_time_lapse(text)) return *lapse;
  standard_error().print(
      std::string("Homewarden: ") + kTimeLapse + "=" + text +
      " is no time lapse; 60@1700000000 would be one, 60 times as fast since that second.");
  std::exit(1);
}

}  // namespace

AppOptions parse_options(const QStringList& arguments, Face face) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      face == Face::kWindow
          ? "Home automation for X10 power-line devices."
          : "Home automation for X10 power-line devices, without a window: runs the events, the "
            "macros and the web pages, and leaves the house to the window when that is opened.");
  const QCommandLineOption help = parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption folder(
      "folder", "Keep the data files, pictures and sounds in this folder.", "folder");
  const QCommandLineOption demo(
      "demo", "Start a furnished house on an emulated interface; no real house is touched.");
  const QCommandLineOption reset("demo-reset", "Furnish the demo house anew, then start it.");
  const QCommandLineOption trace(
      "trace-serial", "Print the bytes on the serial line with their times on standard error.");
  QCommandLineOption report("report-start", "Print the time of the first paint and the memory.");
  report.setFlags(QCommandLineOption::HiddenFromHelp);
  QCommandLineOption loop("report-loop", "Print how long the event loop is busy at most.");
  loop.setFlags(QCommandLineOption::HiddenFromHelp);
  const QCommandLineOption supervise(
      "supervise",
      "Start the service and keep it running, for a system without a service manager.");
  QCommandLineOption limit("stop-limit", "Kill a supervised service after so many seconds.",
                           "seconds");
  limit.setFlags(QCommandLineOption::HiddenFromHelp);
  parser.addOptions({folder, demo, reset, trace, loop});
  parser.addOptions(face == Face::kWindow ? QList{report} : QList{supervise, limit});
  parser.process(arguments);

  AppOptions options;
  if (parser.value(folder).contains(QChar::ReplacementCharacter)) {
    standard_error().print("Homewarden: the name given with --folder is not in UTF-8.");
    std::exit(1);
  }
  if (parser.isSet(folder))
    options.folder = std::filesystem::path(QFile::encodeName(parser.value(folder)).toStdString());
  options.demo_reset = parser.isSet(reset);
  options.demo = parser.isSet(demo) || options.demo_reset;
  options.trace_serial = parser.isSet(trace);
  options.report_start = face == Face::kWindow && parser.isSet(report);
  options.time_lapse = time_lapse();
  options.report_loop = parser.isSet(loop);
  options.supervise = face == Face::kNone && parser.isSet(supervise);
  if (face == Face::kNone && parser.isSet(limit))
    options.stop_limit = std::chrono::seconds(parser.value(limit).toUInt());
  return options;
}

}  // namespace homewarden
