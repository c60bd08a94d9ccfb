#include "automation/macros.h"

#include <string_view>

#include "automation/macro_line.h"
#include "base/lines.h"
#include "base/text.h"

namespace homewarden {
namespace {

// The text between the first and the second tilde, without taking the rest apart.
std::string_view trigger_code(std::string_view line) {
  const auto first = line.find('~');
  if (first == std::string_view::npos) return {};
  return line.substr(first + 1, line.find('~', first + 1) - first - 1);
}

}  // namespace

Macros::Macros(HiddenLists& lists, StatusBar& status, ListFile& macros)
    : lists_(lists), status_(status), macros_(macros) {}

// The queue cannot run meanwhile: nothing here waits.
void Macros::amacros(const std::string& housecode, int anumber, int function) {
  const auto content = macros_.content();
  if (!content) return;
  const std::string code = housecode + std::to_string(anumber);
  std::string queued;
  LineReader reader(*content);
  while (const auto line = reader.next()) {
    if (!equals_ignoring_case(trigger_code(*line), code)) continue;
    const auto macro = parse_macro(*line);
    if (!macro || macro->trigger.function != function) continue;
    queued += std::to_string(macro->target.function) + macro->target.code() + "~";
  }
  if (queued.empty()) return;
  status_.panel2 = "Macro created and added to queue";
  lists_.txt_queue.text = lists_.txt_queue.text.get() + queued;
}

}  // namespace homewarden
