#include "automation/macro_outlook.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/macro_chain.h"
#include "base/text.h"
#include "platform/interface_control.h"

namespace homewarden {
namespace {

const char* const kIncomplete = "Choose both devices to see the macro as a sentence.";

// "Radio", "Radio and Lamp", "Radio, Lamp and Fan".
std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += names[i];
  }
  return text;
}

// With its room where another device of these has the same name.
std::vector<std::string> told_apart(const std::vector<MacroFace::End>& ends) {
  std::vector<std::string> names;
  for (const MacroFace::End& end : ends) {
    const bool is_shared =
        std::any_of(ends.begin(), ends.end(), [&end](const MacroFace::End& other) {
          return other.device == end.device && other.room != end.room;
        });
    names.push_back(is_shared && !end.room.empty() ? end.device + " in " + end.room : end.device);
  }
  return names;
}

bool switches_itself(const Macro& macro) {
  return macro.trigger.function == macro.target.function &&
         equals_ignoring_case(macro.trigger.code(), macro.target.code());
}

}  // namespace

MacroOutlook::MacroOutlook(MacroPanel& panel, HouseIndex& house) : panel_(panel), house_(house) {
  panel.ListVIew2.items.changed.connect([this] { show_list(); });
  panel.lab_macronotice.visible.changed.connect([this] { show_list(); });
  house.changed.connect([this] {
    show_list();
    show_sentence();
  });
  for (ComboBox* box : {&panel.com_sel1, &panel.mac_event, &panel.com_sel2, &panel.mac_whattodo})
    box->text.changed.connect([this] { show_sentence(); });
  panel.frm_macros.visible.changed.connect([this] {
    leave_choice_open();
    show_list();
    show_sentence();
  });
}

// Both boxes are filled with the same device: nobody has chosen that.
void MacroOutlook::leave_choice_open() {
  if (!panel_.frm_macros.visible) return;
  const auto macro = chosen();
  if (macro && switches_itself(*macro)) panel_.com_sel2.text = std::string();
}

std::optional<Macro> MacroOutlook::chosen() const {
  return macro_of_choices(panel_.com_sel1.text.get(), panel_.mac_event.text.get(),
                          panel_.com_sel2.text.get(), panel_.mac_whattodo.text.get());
}

MacroFace::End MacroOutlook::end_of(const MacroEnd& end) const {
  const Device* device = house_.by_label(end.name + " " + end.code());
  if (!device) device = house_.by_address(end.house_code, end.unit);
  const bool is_it =
      device && device->unit == end.unit &&
      (end.name.empty() || equals_ignoring_case(device->room + " " + device->name, end.name));
  if (is_it) return {device->room, device->name, "", end.function == kX10On};
  return {"", end.name.empty() ? end.code() : end.name, "", end.function == kX10On};
}

void MacroOutlook::show_list() {
  if (!panel_.frm_macros.visible) return;
  const auto& items = panel_.ListVIew2.items.get();
  std::vector<MacroFace> faces;
  std::vector<Macro> macros;
  for (const std::string& item : items) {
    MacroFace& face = faces.emplace_back();
    face.text = item;
    auto macro = parse_macro(replace_all(item, " ", "~"));
    if (!macro) continue;
    face.trigger = end_of(macro->trigger);
    face.trigger.words = event_words(macro->trigger);
    face.target = end_of(macro->target);
    face.target.words = face.target.on ? "on" : "off";
    macros.push_back(std::move(*macro));
  }
  panel_.macrofaces = std::move(faces);
  panel_.lab_nomacros.visible = items.empty() && !panel_.lab_macronotice.visible;

  std::vector<MacroFace::End> loop;
  for (const MacroEnd& end : endless_chain_among(std::move(macros))) {
    MacroFace::End device = end_of(end);
    device.on = false;  // whatever happens to it, it is the same one
    if (std::find(loop.begin(), loop.end(), device) == loop.end())
      loop.push_back(std::move(device));
  }
  const std::vector<std::string> names = told_apart(loop);
  panel_.lab_macroloop.caption =
      joined(names) + (names.size() == 1 ? " sets itself off" : " set each other off") +
      " again and again. This goes round for ever: delete one of these macros.";
  panel_.lab_macroloop.visible = !names.empty();
}

void MacroOutlook::show_sentence() {
  const auto macro = chosen();
  const bool is_self = macro && switches_itself(*macro);
  const bool is_begun = !trim_blanks(panel_.com_sel1.text.get()).empty() &&
                        !trim_blanks(panel_.com_sel2.text.get()).empty();
  panel_.com_savemacro.enabled = is_begun && !is_self;
  panel_.lab_macroself.caption =
      is_self ? "A device that is switched by itself goes round for ever. Choose another one." : "";
  if (!macro) {
    panel_.lab_macrosentence.caption = kIncomplete;
    return;
  }
  const MacroFace::End trigger = end_of(macro->trigger);
  const MacroFace::End target = end_of(macro->target);
  const std::vector<std::string> names = told_apart({trigger, target});
  panel_.lab_macrosentence.caption = "When " + names[0] + " " + event_words(macro->trigger) +
                                     ", turn " + names[1] + (target.on ? " on." : " off.");
}

}  // namespace homewarden
