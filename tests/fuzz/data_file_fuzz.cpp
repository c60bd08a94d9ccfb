// The whole program on a data file that anybody may have written: it starts, works for a minute
// and answers what is pressed. DATA_FILE is the file's name.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>

#include "core/program.h"
#include "platform/platform.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_interface.h"
#include "tests/platform/fake_web.h"
#include "tests/platform/memory_files.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
using namespace std::chrono_literals;

void run_house(const std::string& content) {
  VirtualLoop loop;
  MemoryFiles files;
  MemoryRegistry registry;
  FakeServices services;
  FakeInstance instance;
  FakeInterface interface_control(loop);
  FakeDialogs dialogs(loop);
  FakeDesktop desktop;
  FakeSounds sounds;
  FakeWeb web;
  files.contents["/house/rmlst.hwd"] = "Hall~~~\r\nHall~Lamp~A~1\r\nHall~Fan~B~12\r\n";
  files.contents["/house/evelst.hwd"] = "Hall Lamp~A~1~40~12:01~on~daily~mtwufsr\r\n";
  files.contents["/house/macs.hlk"] = "When~A1~Hall~Lamp~turns~on~Turn~On~B12~Hall~Fan\r\n";
  files.contents["/house/" DATA_FILE] = content;
  interface_control.status_of_port[1] = 0;
  loop.set_wall_clock(2023, 6, 21, 11, 59, 58);

  Program program({loop, files, registry, services, instance, interface_control, dialogs, desktop,
                   sounds, web, "/house", ""},
                  [](std::exception_ptr) { std::abort(); });
  FrmMain& form = program.frm_main;
  program.start();
  loop.advance(5s);
  for (const int function : {2, 3, 4}) interface_control.CommandReceived("A1", function);
  for (const auto& node : form.Tree.roots()) {
    form.Tree.selected = node.get();
    form.Tree.click();
  }
  if (!form.ListView1.rows.get().empty()) {
    form.ListView1.selected = 0;
    form.ListView1.double_click();
    form.Command6.click();
  }
  form.ListView1.column_click(5);
  form.com_savemacro.click();
  loop.advance(70s);
  // What was understood is written back without growing.
  if (files.contents["/house/" DATA_FILE].size() > 2 * content.size() + 4096) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  run_house(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
