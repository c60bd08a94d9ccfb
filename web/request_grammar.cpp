#include "web/request_grammar.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/code_page.h"
#include "base/text.h"

namespace homewarden {
namespace {

bool is_control(unsigned char c) {
  return c < ' ' || c == 0x7f;
}

bool holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::optional<WebAction> action_of(std::string_view query) {
  if (contains_ignoring_case(query, "loadroom")) return WebAction::kRoom;
  if (contains_ignoring_case(query, "turnon")) return WebAction::kSwitchOn;
  if (contains_ignoring_case(query, "turnoff")) return WebAction::kSwitchOff;
  return std::nullopt;
}

}  // namespace

WebRequest classify_request(std::string_view page, std::string_view query) {
  const bool media_center = holds(page, kMediaCenterPage);
  if (query.empty()) {
    if (page.empty() || media_center) return {WebAction::kHome, PageFamily::kMediaCenter};
    if (holds(page, kNormalPage)) return {WebAction::kHome, PageFamily::kNormal};
    return {};
  }
  // "wmcindex.html" contains "index.html": a ten-foot request without a keyword stays a file.
  if (!holds(page, kNormalPage)) return {};
  const auto action = action_of(query);
  if (!action) return {};
  return {*action, media_center ? PageFamily::kMediaCenter : PageFamily::kNormal};
}

std::optional<SwitchQuery> split_switch_query(std::string_view query, PageFamily family) {
  const bool again = query.ends_with(kAgain);
  if (again) query.remove_suffix(kAgain.size());
  const std::size_t count = family == PageFamily::kMediaCenter ? 6 : 5;
  std::vector<std::string_view> fields;
  while (fields.size() + 1 < count) {
    const auto end = query.find('~');
    if (end == std::string_view::npos) return std::nullopt;
    fields.push_back(query.substr(0, end));
    query.remove_prefix(end + 1);
  }
  fields.push_back(query);
  const auto unit = to_integer16(fields[1]);
  if (!unit || std::any_of(fields[0].begin(), fields[0].end(), is_control)) return std::nullopt;
  SwitchQuery result{std::string(fields[0]), *unit, std::string(fields[2]),
                     std::string(fields[4]), 0,     again};
  if (family == PageFamily::kMediaCenter) {
    constexpr double kFurthest = 1000;
    const double position = leading_number(fields[5]);
    if (std::abs(position) < kFurthest) result.position = static_cast<int>(position);
  }
  return result;
}

std::string room_of_query(std::string_view query) {
  return replace_all_ignoring_case(query, "loadroom", "");
}

std::string decode_query(std::string_view query) {
  return percent_decoded(query);
}

std::optional<std::string> typed_name(std::string_view name) {
  std::string typed = from_utf8(name);
  const auto unknown = [](std::string_view text) {
    return std::count(text.begin(), text.end(), '?');
  };
  if (typed == name || unknown(typed) != unknown(name)) return std::nullopt;
  return typed;
}

}  // namespace homewarden
