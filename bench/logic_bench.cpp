// How long the room list and the tree take in the logic, without painting.

#include <benchmark/benchmark.h>

#include <string>

#include "core/devices.h"
#include "core/house/navigation_tree.h"
#include "core/lists/room_list.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_interface.h"
#include "tests/platform/fake_services.h"
#include "tests/platform/fake_speech.h"
#include "tests/platform/memory_files.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;

// Ten devices in a room, in an order that is far from sorted.
std::string room_list(int devices) {
  std::string list;
  for (int i = 0; i < devices; ++i) {
    const auto shuffled = static_cast<unsigned>(i) * 7919U % static_cast<unsigned>(devices);
    list += "Room " + std::to_string(shuffled / 10) + "~Device " + std::to_string(shuffled) + "~" +
            static_cast<char>('A' + shuffled % 16) + "~" + std::to_string(shuffled % 16 + 1) +
            "\r\n";
  }
  return list;
}

void loadlists_and_loadtree(benchmark::State& state) {
  VirtualLoop loop;
  MemoryFiles files;
  MemoryRegistry registry;
  FakeServices services;
  FakeInterface interface_control(loop);
  FakeDialogs dialogs(loop);
  FakeSounds sounds;
  files.contents["/house/rmlst.hwd"] = room_list(static_cast<int>(state.range(0)));
  const auto fail = [](std::exception_ptr error) { std::rethrow_exception(error); };
  FrmMain form;
  Operations operations(fail);
  Settings settings(registry);
  Module1 module1(loop, registry, services, "");
  DeviceState device_state(module1, loop);
  ListFile room_file(files, "/house/rmlst.hwd", "/house/tc.tmp");
  HouseIndex house(settings);
  Notices notices;
  RoomList rooms(form, form, form, form, form, module1, house, room_file, notices);
  DeviceCommands commands(form.Statusbar, form, loop, module1, interface_control, device_state);
  Presses presses(operations, house, device_state, commands);
  DevicePanel devices(form, form, operations, house, device_state, commands, presses, dialogs,
                      sounds, "/house");
  FakeSpeech agent;
  Speech speech(form, form, {}, form, form, form.Statusbar, operations, house, settings,
                device_state, commands, agent);
  speech.initagent();
  NavigationTree tree(form, operations, loop, rooms, house, devices, speech);

  for (auto _ : state) {
    operations.start(rooms.loadlists());
    tree.loadtree();
    state.PauseTiming();
    if (form.lst_codes.items.get().size() != static_cast<std::size_t>(state.range(0)))
      state.SkipWithError("a device is missing");
    rooms.cleartree(form.Tree);
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(loadlists_and_loadtree)
    ->RangeMultiplier(10)
    ->Range(100, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);

}  // namespace

BENCHMARK_MAIN();
