#pragma once

#include <string>
#include <vector>

#include "base/task.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "core/notices.h"
#include "ui/home_panel.h"
#include "ui/house_panel.h"
#include "ui/panel_stack.h"
#include "ui/shared_state.h"
#include "ui/tree_view.h"

namespace homewarden {

// The house as `rmlst.hwd` describes it, and the panels that show it.
class RoomList {
 public:
  RoomList(HomePanel& home, HousePanel& room, PanelStack& panels, HiddenLists& lists, Flags& flags,
           Module1& module1, HouseIndex& house, ListFile& list, Notices& notices);

  // Fills `lst_rooms` with every line of the file, sorted, and the house index from it. A missing
  // file is an empty list. A file that cannot be read is an empty list, and what is wrong stands on
  // the home page, as do lines that are no lines of a room list.
  Task<void> loadlists();

  // The heading of the device panel alone; its slots stay.
  void loadroom(const std::string& room);
  // Shows the home panel and hides the others.
  void gohome();
  // Leaves no node and no selection; the change is told once.
  void cleartree(TreeView& tree);

  // What a person looks at: the panel and, when it is the device panel, the room; "" otherwise.
  struct View {
    const Frame* panel = nullptr;
    std::string room;
    bool operator==(const View&) const = default;
  };
  View view() const;

 private:
  // All lines of the file, in its order; none when it cannot be read, which is told.
  std::vector<std::string> read_file();

  HomePanel& home_;
  HousePanel& room_;
  PanelStack& panels_;
  HiddenLists& lists_;
  Flags& flags_;
  Module1& module1_;
  HouseIndex& house_;
  ListFile& list_;
  Notices& notices_;
};

}  // namespace homewarden
