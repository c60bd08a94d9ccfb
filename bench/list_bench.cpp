// The event list from its file to the painted rows, in a window that is not on a screen.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <QPixmap>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/text.h"
#include "core/house_index.h"
#include "core/lists/choice_lists.h"
#include "core/settings.h"
#include "platform/linux/posix_files.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_services.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"
#include "ui/qt/list_pane.h"
#include "ui/qt/main_window_view.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
namespace fs = std::filesystem;

std::string event_list(int events) {
  std::string lines;
  for (int i = 0; i < events; ++i) {
    const int shuffled = static_cast<int>(static_cast<long>(i) * 7919 % events);
    lines += "Living Room Table Lamp " + std::to_string(shuffled) + "~B~12~40~" +
             two_digits(i % 24) + ":" + two_digits(i % 60) + "~on~daily~mtwufsr\r\n";
  }
  return lines;
}

// The devices of the events.
std::vector<std::string> room_list(int devices) {
  std::vector<std::string> lines;
  for (int i = 0; i < devices; ++i)
    lines.push_back("Living Room~Table Lamp " + std::to_string(i) + "~B~12");
  return lines;
}

void loadevents_and_paint(benchmark::State& state) {
  const auto events = static_cast<int>(state.range(0));
  const fs::path folder =
      fs::temp_directory_path() / ("homewarden-bench-" + std::to_string(getpid()));
  fs::create_directories(folder);
  os_linux::PosixFiles files;
  files.write(folder / "evelst.hwd", event_list(events));
  VirtualLoop loop;
  MemoryRegistry registry;
  FakeServices services;
  FrmMain form;
  fill_event_columns(form);
  Operations operations([](std::exception_ptr error) { std::rethrow_exception(error); });
  Module1 module1(loop, registry, services, "");
  ListFile event_file(files, folder / "evelst.hwd", folder / "temp.txt");
  ListFile macro_file(files, folder / "macs.hlk", folder / "tempmac.txt");
  Settings settings(registry);
  HouseIndex house(settings);
  house.set_lines(room_list(events));
  EventList list(form, form, form, module1, house, event_file, macro_file);
  form.Tree.add(nullptr, "Events", "Events");
  form.frm_event.visible = true;
  view::MainWindowView view(form);
  form.visible = true;
  QApplication::processEvents();

  for (auto _ : state) {
    operations.start(list.loadevents());
    QApplication::processEvents();
    benchmark::DoNotOptimize(view.grab());
  }
  if (form.ListView1.rows.get().size() != static_cast<std::size_t>(events))
    state.SkipWithError("an event is missing");
  fs::remove_all(folder);
}
BENCHMARK(loadevents_and_paint)->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The part of the window: rows that are there already, shown and painted.
void show_rows_and_paint(benchmark::State& state) {
  std::vector<ListView::Row> rows;
  for (int i = 0; i < state.range(0); ++i)
    rows.push_back({"Living Room Table Lamp " + std::to_string(i), "B", "12", "40%",
                    two_digits(i % 24) + ":" + two_digits(i % 60), "on", "daily", "mtwufsr"});
  FrmMain form;
  fill_event_columns(form);
  form.frm_event.visible = true;
  view::MainWindowView view(form);
  form.visible = true;
  QApplication::processEvents();
  auto* list = view.findChild<view::ListPane*>();

  for (auto _ : state) {
    state.PauseTiming();
    form.ListView1.rows = std::vector<ListView::Row>();
    auto more = rows;
    benchmark::DoNotOptimize(list->grab());
    state.ResumeTiming();
    form.ListView1.rows = std::move(more);
    benchmark::DoNotOptimize(list->grab());
  }
  if (list->model()->rowCount() != state.range(0)) state.SkipWithError("a row is missing");
}
BENCHMARK(show_rows_and_paint)->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
