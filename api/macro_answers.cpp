#include "api/macro_answers.h"

#include <utility>

#include "api/line_id.h"
#include "automation/event_effect.h"
#include "base/code_page.h"
#include "base/lines.h"
#include "base/text.h"
#include "platform/interface_control.h"

namespace homewarden {

MacroAnswers::MacroAnswers(ListFile& macros, const HouseIndex& house, DeviceId id_of)
    : macros_(macros), house_(house), id_of_(std::move(id_of)) {}

const Device* MacroAnswers::device_of(const MacroEnd& end) const {
  const Device* device = house_.by_label(end.name + " " + end.code());
  if (!device && end.name.empty()) device = house_.by_address(end.house_code, end.unit);
  return device && device->unit == end.unit ? device : nullptr;
}

std::string MacroAnswers::name_of(const MacroEnd& end) const {
  const Device* device = device_of(end);
  if (device) return device->roomdevice();
  return end.name.empty() ? end.code() : end.name;
}

Json MacroAnswers::end_of(const MacroEnd& end, std::string words) const {
  const Device* device = device_of(end);
  return Json::Object{{"device", device ? Json(id_of_(*device)) : Json()},
                      {"address", to_utf8(end.code())},
                      {"text", to_utf8(name_of(end) + " " + words)}};
}

std::optional<Json::Array> MacroAnswers::all() const {
  Json::Array answers;
  if (!macros_.exists()) return answers;
  const auto content = macros_.content();
  if (!content) return std::nullopt;
  LineIds ids("m");
  LineReader reader(*content);
  while (const auto line = reader.next()) {
    if (trim_blanks(*line).empty()) continue;
    const auto macro = parse_macro(*line);
    Json::Object answer{{"id", ids.of(*line)}};
    if (macro) {
      const std::string turn = macro->target.function == kX10On ? "on" : "off";
      answer.emplace_back("trigger", end_of(macro->trigger, event_words(macro->trigger)));
      answer.emplace_back("target", end_of(macro->target, "turns " + turn));
      answer.emplace_back(
          "text", to_utf8("When " + name_of(macro->trigger) + " " + event_words(macro->trigger) +
                          ", turn " + name_of(macro->target) + " " + turn));
    } else {
      answer.emplace_back("trigger", nullptr);
      answer.emplace_back("target", nullptr);
      answer.emplace_back("text", to_utf8(shown_macro(*line)));
    }
    answer.emplace_back("line", to_utf8(*line));
    answer.emplace_back("warning",
                        macro ? to_utf8(what_is_wrong_with(*macro, house_))
                              : std::string("This line is no macro and never does anything."));
    answers.emplace_back(std::move(answer));
  }
  return answers;
}

}  // namespace homewarden
