#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden {

// The two families of pages: for browsers, and for ten-foot screens with a remote control. Each has
// a page, whose file is its template.
enum class PageFamily { kNormal, kMediaCenter };
inline constexpr std::string_view kNormalPage = "index.html";
inline constexpr std::string_view kMediaCenterPage = "wmcindex.html";

enum class WebAction { kHome, kRoom, kSwitchOn, kSwitchOff, kFile };

struct WebRequest {
  WebAction action = WebAction::kFile;
  PageFamily family = PageFamily::kNormal;
};

// What a request for this page with this query asks for: the first rule that fits. Parts of the
// page's name are looked for with their letter case, keywords of the query without. What fits no
// rule is a file. The query is one of decode_query().
WebRequest classify_request(std::string_view page, std::string_view query);

// What ends a switch query that repeats an order.
inline constexpr std::string_view kAgain = "~again";

// The fields of a switch query: "A~3~KitchenLamp~turnon~Kitchen" and, for ten-foot pages, a sixth.
// No name holds a tilde, so the end of one that repeats an order is no part of a name.
struct SwitchQuery {
  std::string house;
  int unit = 0;
  std::string key;     // of the device
  std::string room;    // without blanks
  int position = 0;    // of the device in its room, from 0; 0 in the normal family
  bool again = false;  // sends once more what could not be sent
};

// Nothing when the query has too few fields, its unit is no number or its house code has control
// characters: it stands in messages, where a line break would forge another one.
std::optional<SwitchQuery> split_switch_query(std::string_view query, PageFamily family);

// The room that a query asks for: without every "loadroom"; "" finds every device.
std::string room_of_query(std::string_view query);

// The query as the program wrote it into its links: browsers encode what is not ASCII. A percent
// sign without two hexadecimal digits behind it stays.
std::string decode_query(std::string_view query);

// A decoded name as somebody meant it who typed the address: browsers encode typed letters beyond
// ASCII in UTF-8, the program's links are in the code page. Nothing when it holds no such letter or
// one that the code page does not have. A name that is found as it stands must not be read so.
std::optional<std::string> typed_name(std::string_view name);

}  // namespace homewarden
