#include "web/page_builder.h"

#include <optional>
#include <utility>

#include "base/lines.h"
#include "base/text.h"
#include "core/devices.h"
#include "web/request_grammar.h"

namespace homewarden {
namespace {

constexpr int kPlaces = 10;     // devices on a page
constexpr int kMenuSlots = 19;  // rooms in the menu of a ten-foot page
constexpr std::string_view kRoomMark = "~~~";
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

// What stands in a link in place of a character that would end it, be taken for an encoded one or
// for the start of an entity, or for a placeholder; the others are left to the browser.
std::string for_link(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char letter : text) {
    const auto code = static_cast<unsigned char>(letter);
    if (code > ' ' && code != 0x7f && std::string_view("\"#%&<>").find(letter) == std::string::npos)
      encoded += letter;
    else
      encoded.append({'%', kDigits[code / 16U], kDigits[code % 16U]});
  }
  return encoded;
}

// A name as it can be read on the page.
std::string for_reading(std::string_view text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '&')
      escaped += "&amp;";
    else if (letter == '<')
      escaped += "&lt;";
    else if (letter == '>')
      escaped += "&gt;";
    else
      escaped += letter;
  }
  return escaped;
}

void replace(std::string& html, std::string_view from, std::string_view to) {
  html = replace_all_ignoring_case(html, from, to);
}

// Whether a line is one of the room that a page shows: the room of this name without blanks. Only
// when the list has none, the lines on which the name stands anywhere.
ListFile::Choice lines_of_room(std::string_view content, std::string slug) {
  const auto is_room = [slug](std::string_view line) {
    return equals_ignoring_case(without_blanks(line.substr(0, line.find('~'))), slug);
  };
  LineReader reader(content);
  while (const auto line = reader.next())
    if (is_room(*line)) return is_room;
  return [slug = std::move(slug)](std::string_view line) {
    return contains_ignoring_case(without_blanks(line), slug);
  };
}

// Calls `function` with the number, from 1, and the name of each room line.
template <class Function>
int for_each_room(ListFile& rooms, Function function) {
  const auto content = rooms.content();
  LineReader reader(content ? *content : std::string_view());
  int number = 0;
  while (const auto line = reader.next())
    if (line->find(kRoomMark) != std::string_view::npos)
      function(++number, replace_all(*line, kRoomMark, ""));
  return number;
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
                         Files& files, ListFile& rooms, std::filesystem::path document_folder)
    : form_(form),
      module1_(module1),
      settings_(settings),
      state_(state),
      files_(files),
      rooms_(rooms),
      folder_(std::move(document_folder)) {}

void PageBuilder::loadnormhtml() {
  append_template(kNormal.page);
}

void PageBuilder::loadhtml() {
  append_template(kMediaCenter.page);
}

void PageBuilder::append_template(std::string_view file) {
  const auto content = files_.read(folder_ / file);
  if (!content) return;
  LineReader reader(*content);
  while (const auto line = reader.next()) form_.page.append(*line).append("\r\n");
}

void PageBuilder::loadnormtree(std::string& html) {
  for_each_room(rooms_, [&html](int number, const std::string& name) {
    replace(html, place("room", number),
            "<a target=\"_top\" href=\"index.html?loadroom" + for_link(without_blanks(name)) +
                "\">" + kNormal.menu_font + for_reading(name) + "</font></a>");
  });
}

void PageBuilder::loadtree(std::string& html) {
  if (!rooms_.exists()) return;
  const int rooms = for_each_room(rooms_, [&html](int number, const std::string& name) {
    const std::string address = "wmcindex.html?loadroom" + for_link(without_blanks(name));
    replace(html, place("url", number), address);
    replace(html, place("room", number),
            "<a target=\"_top\" href=\"" + address + "\">" + kMediaCenter.menu_font +
                for_reading(name) + "</font></a>");
  });
  for (int slot = rooms + 1; slot <= kMenuSlots; ++slot) {
    replace(html, option_attributes(slot), "");
    replace(html, place("room", slot), "");
  }
}

void PageBuilder::loadnormroom(const std::string& roomname) {
  fill_room(kNormal, roomname);
}

void PageBuilder::loadroom(const std::string& roomname) {
  const auto read = [this](const char* name) {
    return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, name);
  };
  const std::string last_room = read("lastroom");
  const std::string last_device = read("lastdev");
  if (roomname != last_room)
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "lastroom", roomname);
  if (!rooms_.exists()) return;
  const int devices = fill_room(kMediaCenter, roomname);
  remove_modules(devices + 1);
  for (int slot = devices; slot < kPlaces; ++slot) replace(form_.page, place("dev", slot), "");
  if (roomname == last_room && !last_device.empty())
    replace(form_.page, "MCFocusStart=\"option1\"", "MCFocusStart=\"module" + last_device + "\"");
}

// The number of devices.
int PageBuilder::fill_room(const Family& family, std::string_view slug) {
  const auto content = rooms_.content();
  if (!content) return 0;
  std::string title;
  int slot = 0;
  const auto is_in_room = lines_of_room(*content, std::string(slug));
  LineReader reader(*content);
  while (slot < kPlaces) {
    const auto line = reader.next();
    if (!line) break;
    if (line->find(kRoomMark) != std::string_view::npos) continue;
    if (!is_in_room(*line)) continue;
    const auto entry = parse_list_line(*line);
    if (!entry || !entry->device) continue;
    const Device& device = *entry->device;

    const std::string key = device.key();
    const bool on = state_.getlaststatus(key);
    const std::string place_on_page = family.numbered ? "~" + std::to_string(slot) : "";
    const auto address = [&](bool turns_on) {
      return for_link(device.code() + "~" + key + (turns_on ? "~turnon~" : "~turnoff~") +
                      without_blanks(device.room)) +
             place_on_page;
    };
    const auto not_sent = state_.not_sent(key);
    const Cell cell{address(!on), picture(key, on), for_reading(device.name),
                    not_sent ? address(not_sent->on) + std::string(kAgain) : ""};
    replace(form_.page, place("dev", slot), cell.markup(family));
    if (family.numbered)
      replace(form_.page, place("mrl", slot + 1), std::string(family.page) + "?" + cell.address);
    title = device.room;
    ++slot;
  }
  replace(form_.page, "<room>", for_reading(title));
  return slot;
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
