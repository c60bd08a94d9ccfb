// What reacting and changing cost in a house of 10,000 devices and 10,000 macros; real files in the
// temporary folder.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "automation/macros.h"
#include "core/program/program.h"
#include "platform/linux/posix_files.h"
#include "tests/platform/fake_world.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
namespace fs = std::filesystem;

constexpr int kMany = 10000;

std::string address(int i) {
  return std::string(1, static_cast<char>('A' + i / 16 % 16)) + std::to_string(i % 16 + 1);
}

struct Folder {
  Folder() : path(fs::temp_directory_path() / ("homewarden-bench-" + std::to_string(getpid()))) {
    fs::create_directories(path);
  }
  ~Folder() { fs::remove_all(path); }
  fs::path path;
  os_linux::PosixFiles files;
};

// One macro in 256 has this trigger.
void amacros(benchmark::State& state) {
  Folder folder;
  std::string lines;
  for (int i = 0; i < kMany; ++i)
    lines += "When~" + address(i) + "~Living~Room~Lamp~turns~on~Turn~On~B12~Hall~Fan\r\n";
  folder.files.write(folder.path / "macs.hlk", lines);
  FrmMain form;
  ListFile list(folder.files, folder.path / "macs.hlk", folder.path / "tempmac.txt");
  Macros macros(form, form.Statusbar, list);
  for (auto _ : state) {
    macros.amacros("A", 1, 2);
    state.PauseTiming();
    if (form.txt_queue.text.get().size() < 5 * (kMany / 256)) state.SkipWithError("too few fired");
    form.txt_queue.text = std::string();
    state.ResumeTiming();
  }
}
BENCHMARK(amacros)->Unit(benchmark::kMillisecond);

void device_lookup(benchmark::State& state) {
  std::vector<std::string> rooms;
  for (int i = 0; i < kMany; ++i)
    rooms.push_back("Living Room " + std::to_string(i) + "~Table Lamp~A~2");
  rooms.push_back("Hall~Fan~P~16");
  MemoryRegistry registry;
  Settings settings(registry);
  HouseIndex house(settings);
  house.set_lines(rooms);
  for (auto _ : state) {
    const Device* found = house.by_address("P", 16);
    if (!found) state.SkipWithError("the last device was not found");
  }
}
BENCHMARK(device_lookup)->Unit(benchmark::kMicrosecond);

// Wall-clock time of a deletion whose pauses take none, events included.
void delete_one_device(benchmark::State& state) {
  Folder folder;
  std::string rooms;
  std::string events;
  for (int i = 0; i < kMany; ++i) {
    rooms += "Room " + std::to_string(i / 10) + "~Device " + std::to_string(i) + "~A~1\r\n";
    events += "Room " + std::to_string(i / 10) + " Device " + std::to_string(i) +
              "~A~1~40~07:30~on~daily~m\r\n";
  }
  for (auto _ : state) {
    state.PauseTiming();
    folder.files.write(folder.path / "rmlst.hwd", rooms);
    folder.files.write(folder.path / "evelst.hwd", events);
    FakeWorld world;
    world.used_files = &folder.files;
    Program program(world.platform(folder.path),
                    [](std::exception_ptr error) { std::rethrow_exception(error); });
    program.start();
    world.loop.advance(std::chrono::seconds(2));
    FrmMain& form = program.frm_main;
    form.Tree.selected = form.Tree.find("Device 5000~A~1");
    state.ResumeTiming();
    form.Tree.key_press(4);
    world.loop.advance(std::chrono::seconds(30));
    state.PauseTiming();
    if (form.Tree.find("Device 5000~A~1") || form.ListView1.rows.get().size() != kMany - 1)
      state.SkipWithError("the device or its event is still there");
    state.ResumeTiming();
  }
}
BENCHMARK(delete_one_device)->Unit(benchmark::kMillisecond);

// 200 devices, all switched at the wall.
struct ApiWorld : FakeWorld {
  ApiWorld() {
    std::string rooms;
    for (int i = 0; i < kDevices; ++i)
      rooms += "Room " + std::to_string(i / 10) + "~Device " + std::to_string(i) + "~" +
               address(i).insert(1, "~") + "\r\n";
    folder.files.write(folder.path / "rmlst.hwd", rooms);
    used_files = &folder.files;
    program = std::make_unique<Program>(
        platform(folder.path), [](std::exception_ptr error) { std::rethrow_exception(error); });
    program->start();
    loop.advance(std::chrono::seconds(2));
    for (int i = 0; i < kDevices; ++i) interface_control.CommandReceived(address(i), kX10On);
    loop.advance(std::chrono::seconds(2));
  }

  static constexpr int kDevices = 200;
  Folder folder;
  std::unique_ptr<Program> program;
};

void house_for_programs(benchmark::State& state) {
  ApiWorld world;
  std::size_t bytes = 0;
  for (auto _ : state) bytes = world.web.api_answers[world.web.api({"GET", "/house"})].body.size();
  if (bytes < 200UL * ApiWorld::kDevices) state.SkipWithError("a device is missing");
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(house_for_programs)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
