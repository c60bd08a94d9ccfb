// What a pass of the scheduler costs, and for how long it keeps everything else waiting; real files
// in the temporary folder.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "automation/event_list.h"
#include "automation/scheduler.h"
#include "base/text.h"
#include "core/house_index.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/linux/posix_files.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_interface.h"
#include "tests/platform/fake_services.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"
#include "ui/frm_main.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
namespace fs = std::filesystem;

// Remembers how long the longest of its calls took.
class TimedLoop : public VirtualLoop {
 public:
  CallId call_after(Milliseconds delay, std::function<void()> function) override {
    return VirtualLoop::call_after(delay, [this, function = std::move(function)] {
      const auto start = std::chrono::steady_clock::now();
      function();
      longest = std::max(longest, std::chrono::steady_clock::now() - start);
    });
  }
  std::chrono::steady_clock::duration longest{0};
};

class BenchHouse {
 public:
  explicit BenchHouse(int count)
      : folder(fs::temp_directory_path() / ("homewarden-bench-" + std::to_string(getpid()))) {
    fs::create_directories(folder);
    std::string lines;
    std::vector<std::string> devices;
    for (int i = 0; i < count; ++i) {
      devices.push_back("Living Room~Table Lamp " + std::to_string(i) + "~B~12");
      // A sun time now and then; none at 12:00.
      const std::string time =
          i % 10 == 0 ? "sSet:-1" : two_digits(i % 12) + ":" + two_digits(i % 60);
      lines += "Living Room Table Lamp " + std::to_string(i) + "~B~12~40~" + time +
               "~on~daily~mtwufsr\r\n";
    }
    files.write(folder / "evelst.hwd", lines);
    house.set_lines(devices);
    loop.set_wall_clock(2023, 6, 21, 12, 0);
    looked_at("2023-06-21 11:59");
    form.sunrise_time = form.sunset_time = Date(std::chrono::hours(20));
  }
  ~BenchHouse() { fs::remove_all(folder); }

  // As if an earlier start of the program had looked at events until this minute.
  void looked_at(const std::string& minute) {
    module1.regwrite(RegistryRoot::kLocalMachine, kMachineKey + "\\Events", "checked",
                     minute + "/" + minute);
  }

  fs::path folder;
  TimedLoop loop;
  os_linux::PosixFiles files;
  MemoryRegistry registry;
  FakeServices services;
  FakeInterface interface_control{loop};
  FrmMain form;
  Operations operations{[](std::exception_ptr error) { std::rethrow_exception(error); }};
  Module1 module1{loop, registry, services, ""};
  DeviceState device_state{module1, loop};
  DeviceCommands commands{form.Statusbar, form, loop, module1, interface_control, device_state};
  ListFile event_file{files, folder / "evelst.hwd", folder / "temp.txt"};
  Settings settings{registry};
  HouseIndex house{settings};
  ListFile macro_file{files, folder / "macs.hlk", folder / "tempmac.txt"};
  EventList events{form, form, form, module1, house, event_file, macro_file};
  Location location{form, form.Statusbar, form, form, operations, loop, settings};
  EventMemory memory{module1};
  Notices notices;
  OnceEvents once{form, memory, notices};
  Scheduler scheduler{form.Statusbar, notices,    form, form,    form,       location, memory,
                      once,           operations, loop, module1, event_file, commands, [] {}};
};

void scheduler_pass(benchmark::State& state) {
  BenchHouse house(static_cast<int>(state.range(0)));
  int runs = 0;
  for (auto _ : state) {
    house.loop.call_after(std::chrono::milliseconds(0), [&house] { house.form.eventtimer.tick(); });
    house.loop.run_pending();
    state.PauseTiming();
    if (house.form.filebusy || house.form.Statusbar.panel2.get() != "Timer, Loading rooms list" ||
        !house.interface_control.line_log.empty())
      state.SkipWithError("the pass did not end, or an event was due");
    house.loop.set_wall_clock(2023, 6, 21, 12, ++runs % 2);  // never the minute of the run before
    state.ResumeTiming();
  }
  state.counters["longest_turn_ms"] =
      std::chrono::duration<double, std::milli>(house.loop.longest).count();
  state.SetComplexityN(state.range(0));
}
BENCHMARK(scheduler_pass)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// The first run after a day in which the program did not run, without the commands: of one device
// the last one is a day late.
void a_day_missed(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    BenchHouse house(static_cast<int>(state.range(0)));
    house.looked_at("2023-06-20 12:00");
    state.ResumeTiming();
    house.loop.call_after(std::chrono::milliseconds(0), [&house] { house.form.eventtimer.tick(); });
    house.loop.advance(std::chrono::seconds(5));
    state.PauseTiming();
    if (!house.form.Statusbar.panel2.get().starts_with("Caught up"))
      state.SkipWithError("the gap was not found");
    state.counters["longest_turn_ms"] =
        std::chrono::duration<double, std::milli>(house.loop.longest).count();
    state.ResumeTiming();
  }
}
BENCHMARK(a_day_missed)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void loadevents_without_a_view(benchmark::State& state) {
  BenchHouse house(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    house.operations.start(house.events.loadevents());
    house.loop.run_pending();
  }
  if (house.form.ListView1.rows.get().size() != static_cast<std::size_t>(state.range(0)))
    state.SkipWithError("an event is missing");
}
BENCHMARK(loadevents_without_a_view)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
