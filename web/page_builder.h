#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/devices.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/settings.h"
#include "platform/files.h"
#include "ui/frm_server.h"
#include "web/page_rooms.h"
#include "x10/device_state.h"

namespace homewarden {

// Builds the pages of both families from their templates: index.html for browsers, wmcindex.html
// for ten-foot screens. All operations work on the page of the form, all replacements replace every
// occurrence and ignore letter case. The markup is written down in docs/web-pages.md.
class PageBuilder {
 public:
  PageBuilder(FrmServer& form, Module1& module1, Settings& settings, DeviceState& state,
              const Notices& notices, Files& files, std::filesystem::path room_list,
              std::filesystem::path document_folder);

  // Append a template, its lines ended by CR LF; a missing one adds nothing. The page is built of
  // the room list as it is at this moment.
  void loadnormhtml();
  void loadhtml();
  // Tells at the foot of the page what is wrong with the house, a paragraph each.
  void add_foot();

  // Fill the room menu, in the order of the file. Rooms without a line of their own have no entry.
  // Of the 19 entries of a ten-foot page those that are not used go, unless the list is missing.
  void loadnormtree(std::string& html);
  void loadtree(std::string& html);

  // Fill in the first ten devices of the room, its name without blanks; without such a room, of the
  // lines on which the name stands anywhere.
  // A device that the last command did not reach has a link more, which sends it again.
  // The ten-foot one also remembers the room, and puts the focus on the device used last when the
  // room is the one shown last. A name in UTF-8 is found, and remembered in the code page.
  void loadnormroom(const std::string& roomname);
  void loadroom(const std::string& roomname);

  // What a home page shows while no room has been chosen: a hint for the room, and places that are
  // empty.
  void show_no_room();
  // Takes the focus from the device places of a ten-foot page from this one on, 1 to 10; 11 takes
  // none.
  void remove_modules(int first);
  // Takes the entries of a ten-foot room menu from this one on, 1 to 19; 20 takes none.
  void remove_options(std::string& html, int first);

  // The picture's file name for a room name followed by a device name, with or without blanks: that
  // of an appliance module when no type is stored. The file may be missing.
  std::string getimageon(const std::string& fullname) const;
  std::string getimageoff(const std::string& fullname) const;

 private:
  struct Family;
  struct Cell;
  static const Family kNormal;
  static const Family kMediaCenter;

  void append_template(std::string_view file);
  void fill_menu(const Family& family, std::string& html);
  int fill_room(const Family& family, std::string_view slug);
  Cell cell(const Family& family, const Device& device, int slot);
  std::string picture(const std::string& fullname, bool on) const;

  FrmServer& form_;
  Module1& module1_;
  Settings& settings_;
  DeviceState& state_;
  const Notices& notices_;
  Files& files_;
  PageRooms rooms_;
  std::filesystem::path folder_;
};

}  // namespace homewarden
