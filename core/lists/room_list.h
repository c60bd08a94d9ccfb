#pragma once

#include <string>

#include "base/task.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "ui/frm_main.h"

namespace homewarden {

// The house as `rmlst.hwd` describes it, and the panels that show it.
class RoomList {
 public:
  RoomList(FrmMain& form, Module1& module1, HouseIndex& house, ListFile& list);

  // Fills `lst_rooms` with every line of the file, sorted, and the house index from it. A missing
  // file is an empty list. A file that cannot be read is an empty list, and what is wrong stands on
  // the home page, as do lines that are no lines of a room list.
  Task<void> loadlists();

  void loadroom(const std::string& room);
  void gohome();
  void cleartree(TreeView& tree);

 private:
  void read_file();

  FrmMain& form_;
  Module1& module1_;
  HouseIndex& house_;
  ListFile& list_;
};

}  // namespace homewarden
