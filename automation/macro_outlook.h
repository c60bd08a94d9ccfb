#pragma once

#include <optional>

#include "automation/macro_line.h"
#include "core/house_index.h"
#include "ui/macro_panel.h"

namespace homewarden {

// Puts the macro list and the four boxes into sentences. A macro by which a device sets itself off
// again at once cannot be saved, the panel does not begin with one, and macros that go round for
// ever are told.
class MacroOutlook {
 public:
  MacroOutlook(MacroPanel& panel, HouseIndex& house);

 private:
  void leave_choice_open();
  std::optional<Macro> chosen() const;
  void show_list();
  void show_sentence();
  MacroFace::End end_of(const MacroEnd& end) const;

  MacroPanel& panel_;
  HouseIndex& house_;
};

}  // namespace homewarden
