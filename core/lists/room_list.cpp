#include "core/lists/room_list.h"

#include <vector>

#include "base/code_page.h"
#include "base/lines.h"
#include "core/devices.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

const char* const kSubject = "rmlst.hwd";

}  // namespace

RoomList::RoomList(HomePanel& home, HousePanel& room, PanelStack& panels, HiddenLists& lists,
                   Flags& flags, Module1& module1, HouseIndex& house, ListFile& list,
                   Notices& notices)
    : home_(home),
      room_(room),
      panels_(panels),
      lists_(lists),
      flags_(flags),
      module1_(module1),
      house_(house),
      list_(list),
      notices_(notices) {}

Task<void> RoomList::loadlists() {
  if (!list_.exists()) {
    lists_.lst_rooms.clear();
    notices_.withdraw(kSubject);
    house_.set_lines({});
    co_return;
  }
  const FileLock lock = co_await lock_files(flags_, module1_);
  // Only now: commands from the power line look their devices up meanwhile.
  lists_.lst_rooms.clear();
  const std::vector<std::string> written = read_file();
  lists_.lst_rooms.add_all(written);
  house_.set_lines(lists_.lst_rooms.items, written);
}

std::vector<std::string> RoomList::read_file() {
  const auto content = list_.content();
  if (!content) {
    notices_.tell(
        kSubject,
        "The room and device list rmlst.hwd cannot be read, so no rooms are shown. Please "
        "check the file and its permissions in " +
            from_utf8(list_.path().parent_path().string()) + ".");
    return {};
  }

  std::vector<std::string> lines;
  LeftOutLines left_out;
  LineReader reader(*content);
  while (const auto line = reader.next()) {
    lines.emplace_back(*line);
    if (!line->empty() && !parse_list_line(*line)) left_out.add(lines.size());
  }
  if (left_out.empty())
    notices_.withdraw(kSubject);
  else
    notices_.tell(kSubject, left_out.text(kSubject));
  return lines;
}

void RoomList::loadroom(const std::string& room) {
  room_.lab_room.caption = room;
}

void RoomList::gohome() {
  panels_.show_only(home_.frm_home);
}

RoomList::View RoomList::view() const {
  const Frame* panel = panels_.shown();
  return {panel, panel == &room_.frm_devices ? room_.lab_room.caption.get() : std::string()};
}

void RoomList::cleartree(TreeView& tree) {
  const TreeView::Batch batch(tree);
  while (!tree.roots().empty()) tree.remove(tree.roots().front().get());
}

}  // namespace homewarden
