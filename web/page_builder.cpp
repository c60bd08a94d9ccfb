#include "web/page_builder.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/lines.h"
#include "base/text.h"
#include "core/devices.h"
#include "web/page_text.h"
#include "web/request_grammar.h"

namespace homewarden {
namespace {

constexpr int kPlaces = static_cast<int>(PageRooms::kPlaces);
constexpr int kMenuSlots = 19;  // rooms in the menu of a ten-foot page
const char* const kTryAgain = "Not sent. Try again";
const char* const kChooseARoom = "Please Select A Room From The List On The Left";

std::string place(const char* name, int number) {
  return "<" + std::string(name) + std::to_string(number) + ">";
}

std::string option_attributes(int number) {
  return " ID=\"option" + std::to_string(number) + "\" class=\"button2\" MCFocusable=\"true\"";
}

std::string module_attributes(int number) {
  return " ID=\"module" + std::to_string(number) + "\" class=\"imcl1\" MCFocusable=\"true\"";
}

void replace(std::string& html, std::string_view from, std::string_view to) {
  html = replace_all_ignoring_case(html, from, to);
}

}  // namespace

// Where the two families differ.
struct PageBuilder::Family {
  std::string_view page;
  const char* menu_font;
  const char* name_font;
  bool numbered;  // addresses end in the device's place
};

const PageBuilder::Family PageBuilder::kNormal = {
    kNormalPage, "<font color=\"#FFFFFF\">", "<font face=\"Verdana\" color=\"#FFFFFF\">", false};
const PageBuilder::Family PageBuilder::kMediaCenter = {
    kMediaCenterPage, "<font color=\"#FFFFFF\" face=\"Verdana\" size=\"6\">",
    "<font face=\"Verdana\" color=\"#FFFFFF\" size=\"6\">", true};

// A device's place on the page.
struct PageBuilder::Cell {
  std::string address;  // of the switch, without the page, fit for a link
  std::string picture;
  std::string name;  // fit for reading

  std::string again;  // address that repeats what could not be sent; "" when nothing is to repeat

  std::string markup(const Family& family) const {
    const std::string start = "<a target=\"_top\" href=\"" + std::string(family.page) + "?";
    const std::string link = std::string(family.page) + "?" + address;
    std::string cell = "<font face=\"Verdana\" color=\"#FFFFFF\"><a href=\"" + link +
                       "\"><img border=\"2\" src=" + picture + "></a><br><b>" + start + address +
                       "\">" + family.name_font + name + "</font></a></b>";
    if (!again.empty()) cell += "<i>" + start + again + "\">" + kTryAgain + "</a></i>";
    return cell + "</font>";
  }
};

PageBuilder::PageBuilder(FrmServer& form, Module1& module1, Settings& settings, DeviceState& state,
                         const Notices& notices, Files& files, std::filesystem::path room_list,
                         std::filesystem::path document_folder)
    : form_(form),
      module1_(module1),
      settings_(settings),
      state_(state),
      notices_(notices),
      files_(files),
      rooms_(files, std::move(room_list)),
      folder_(std::move(document_folder)) {}

void PageBuilder::loadnormhtml() {
  append_template(kNormal.page);
}

void PageBuilder::loadhtml() {
  append_template(kMediaCenter.page);
}

void PageBuilder::append_template(std::string_view file) {
  rooms_.refresh();
  const auto content = files_.read(folder_ / file);
  if (!content) return;
  std::string& page = form_.page;
  LineReader reader(*content);
  while (const auto line = reader.next()) page.append(*line).append("\r\n");
}

void PageBuilder::add_foot() {
  const std::string text = notices_.text();
  std::string foot;
  LineReader reader(text);
  while (const auto line = reader.next()) foot += "<p>" + for_reading(*line) + "</p>";
  std::string& page = form_.page;
  if (foot.empty() || page.empty()) return;
  page.insert(std::min(to_lower(page).rfind("</body>"), page.size()),
              "<footer role=\"status\">" + foot + "</footer>\r\n");
}

void PageBuilder::loadnormtree(std::string& html) {
  fill_menu(kNormal, html);
}

void PageBuilder::loadtree(std::string& html) {
  if (!rooms_.is_there()) return;
  fill_menu(kMediaCenter, html);
  remove_options(html, static_cast<int>(rooms_.names().size()) + 1);
}

void PageBuilder::remove_options(std::string& html, int first) {
  for (int slot = first; slot <= kMenuSlots; ++slot) {
    replace(html, option_attributes(slot), "");
    replace(html, place("room", slot), "");
  }
}

void PageBuilder::fill_menu(const Family& family, std::string& html) {
  const auto& names = rooms_.names();
  html = fill_places(html, [&](std::string_view name, int number) -> std::optional<std::string> {
    const bool is_address = name == "url" && family.numbered;
    if ((name != "room" && !is_address) || number < 1 ||
        static_cast<std::size_t>(number) > names.size())
      return std::nullopt;
    const std::string& room = names[static_cast<std::size_t>(number) - 1];
    const std::string address =
        std::string(family.page) + "?loadroom" + for_link(without_blanks(room));
    if (is_address) return address;
    return "<a target=\"_top\" href=\"" + address + "\">" + family.menu_font + for_reading(room) +
           "</font></a>";
  });
}

void PageBuilder::loadnormroom(const std::string& roomname) {
  fill_room(kNormal, rooms_.slug_meant(roomname));
}

void PageBuilder::loadroom(const std::string& roomname) {
  const std::string room = rooms_.slug_meant(roomname);
  const auto read = [this](const char* name) {
    return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, name);
  };
  const std::string last_room = read("lastroom");
  const std::string last_device = read("lastdev");
  if (room != last_room)
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "lastroom", room);
  if (!rooms_.is_there()) return;
  const int devices = fill_room(kMediaCenter, room);
  remove_modules(devices + 1);
  for (int slot = devices; slot < kPlaces; ++slot) replace(form_.page, place("dev", slot), "");
  if (room == last_room && !last_device.empty())
    replace(form_.page, "MCFocusStart=\"option1\"", "MCFocusStart=\"module" + last_device + "\"");
}

// The number of devices.
int PageBuilder::fill_room(const Family& family, std::string_view slug) {
  if (!rooms_.is_known()) return 0;
  const auto devices = rooms_.devices_of(slug);
  std::vector<Cell> cells;
  for (const Device& device : devices)
    cells.push_back(cell(family, device, static_cast<int>(cells.size())));
  const int count = static_cast<int>(cells.size());
  form_.page =
      fill_places(form_.page, [&](std::string_view name, int number) -> std::optional<std::string> {
        if (name == "room" && number < 0)
          return devices.empty() ? "" : for_reading(devices.back().room);
        const bool is_address = name == "mrl" && family.numbered;
        const int slot = is_address ? number - 1 : number;
        if ((name != "dev" && !is_address) || slot < 0 || slot >= count) return std::nullopt;
        const Cell& cell = cells[static_cast<std::size_t>(slot)];
        return is_address ? std::string(family.page) + "?" + cell.address : cell.markup(family);
      });
  return count;
}

PageBuilder::Cell PageBuilder::cell(const Family& family, const Device& device, int slot) {
  const std::string key = device.key();
  const bool on = state_.getlaststatus(key);
  const std::string place_on_page = family.numbered ? "~" + std::to_string(slot) : "";
  const auto address = [&](bool turns_on) {
    return for_link(device.code() + "~" + key + (turns_on ? "~turnon~" : "~turnoff~") +
                    without_blanks(device.room)) +
           place_on_page;
  };
  const auto not_sent = state_.not_sent(key);
  return {address(!on), picture(key, on), for_reading(device.name),
          not_sent ? address(not_sent->on) + std::string(kAgain) : ""};
}

void PageBuilder::show_no_room() {
  replace(form_.page, "<room>", kChooseARoom);
  for (int slot = 0; slot < kPlaces; ++slot) replace(form_.page, place("dev", slot), "&nbsp");
}

void PageBuilder::remove_modules(int first) {
  for (int number = first; number <= kPlaces; ++number)
    replace(form_.page, module_attributes(number), "");
}

std::string PageBuilder::getimageon(const std::string& fullname) const {
  return picture(fullname, true);
}

std::string PageBuilder::getimageoff(const std::string& fullname) const {
  return picture(fullname, false);
}

std::string PageBuilder::picture(const std::string& fullname, bool on) const {
  const std::string type = settings_.read("type", without_blanks(fullname), "switch");
  return std::string(device_type(type).code) + (on ? "on.gif" : "off.gif");
}

}  // namespace homewarden
