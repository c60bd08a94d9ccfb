// The whole program on a data file that anybody may have written: it starts, works for a minute
// and answers what is pressed. DATA_FILE is the file's name.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "tests/fuzz/fuzz_house.h"

namespace {

using namespace homewarden;
using namespace homewarden::testing;
using namespace std::chrono_literals;

void run_house(const std::string& content) {
  FuzzHouse house;
  house.files.contents["/house/" DATA_FILE] = content;
  FrmMain& form = house.program.frm_main;
  house.program.start();
  house.loop.advance(5s);
  for (const int function : {2, 3, 4}) house.interface_control.CommandReceived("A1", function);
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
  house.loop.advance(70s);
  // What was understood is written back without growing.
  if (house.files.contents["/house/" DATA_FILE].size() > 2 * content.size() + 4096) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  run_house(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
