#include "web/refusal_page.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "web/page_text.h"
#include "web/request_grammar.h"

namespace homewarden {
namespace {

// Two slashes at the start would name another machine, and browsers leave out control characters
// between them.
bool leads_here(std::string_view address) {
  const bool is_path =
      address.starts_with('/') && !address.starts_with("//") && !address.starts_with("/\\");
  return is_path && std::all_of(address.begin(), address.end(), [](unsigned char letter) {
           return letter > ' ' && letter != 0x7f;
         });
}

bool switches(std::string_view address) {
  const auto mark = address.find('?');
  if (mark == std::string_view::npos) return false;
  const std::string query = decode_query(address.substr(mark + 1));
  const WebAction action = classify_request(address.substr(0, mark), query).action;
  return action == WebAction::kSwitchOn || action == WebAction::kSwitchOff;
}

const char* title_of(unsigned status, bool switches) {
  if (switches) return "Nothing was switched";
  if (status == 404) return "Not found";
  if (status == 429 || status == 503) return "One moment, please";
  return "Not allowed";
}

struct Link {
  std::string address;
  const char* text;
};

std::string head_of(const char* title, const char* style, const char* script) {
  return std::string(
             "<!DOCTYPE html>\r\n<html lang=\"en\">\r\n<head>\r\n"
             "  <meta charset=\"windows-1252\">\r\n  <title>") +
         title +
         " - Homewarden</title>\r\n"
         "  <meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\r\n"
         "  <meta name=\"color-scheme\" content=\"light dark\">\r\n"
         "  <link rel=\"icon\" type=\"image/png\" href=\"/homewarden.png\">\r\n"
         "  <link rel=\"stylesheet\" href=\"/homewarden-base.css\">\r\n"
         "  <link rel=\"stylesheet\" href=\"/" +
         style + "\">\r\n" + script + "</head>\r\n";
}

// The style sheets show such a text on a page that says it is without devices.
std::string reason_of(const WebRefusal& refusal) {
  return "<p class=\"no-devices\">" + for_reading(refusal.reason) + "</p>\r\n";
}

std::string browser_page(const WebRefusal& refusal, const char* title,
                         const std::vector<Link>& links) {
  std::string items;
  for (const Link& link : links)
    items += "<li><a href=\"" + for_reading(link.address) + "\"><font>" + link.text +
             "</font></a></li>\r\n";
  return head_of(title, "homewarden.css", "") +
         "<body class=\"without-devices\">\r\n<div class=\"side\">\r\n"
         "<header><img src=\"/homewarden.png\" alt=\"\" width=\"40\" height=\"40\">"
         "<p>Homewarden</p></header>\r\n<nav aria-label=\"What you can do\"><ul>\r\n" +
         items + "</ul></nav>\r\n</div>\r\n<main>\r\n<h1>" + title + "</h1>\r\n" +
         reason_of(refusal) + "</main>\r\n</body>\r\n</html>\r\n";
}

std::string ten_foot_page(const WebRefusal& refusal, const char* title,
                          const std::vector<Link>& links) {
  std::string items;
  for (const Link& link : links)
    items += "<div class=\"button2\" MCFocusable=\"true\"><a href=\"" + for_reading(link.address) +
             "\">" + link.text + "</a></div>\r\n";
  return head_of(title, "homewarden-tv.css",
                 "  <script src=\"/homewarden-tv.js\" defer></script>\r\n") +
         "<body class=\"without-devices\">\r\n<nav aria-label=\"What you can do\">\r\n" + items +
         "</nav>\r\n<main>\r\n<header><h1>" + title + "</h1></header>\r\n" + reason_of(refusal) +
         "</main>\r\n</body>\r\n</html>\r\n";
}

}  // namespace

std::string refusal_page(const WebRefusal& refusal) {
  const bool offers_again = leads_here(refusal.again);
  const bool is_press = offers_again && switches(refusal.again);
  const bool is_ten_foot = refusal.asked.find(kMediaCenterPage) != std::string::npos;
  std::vector<Link> links;
  if (offers_again) links.push_back({refusal.again, is_press ? "Press again" : "Try again"});
  links.push_back({"/" + std::string(is_ten_foot ? kMediaCenterPage : kNormalPage), "Home"});
  const char* title = title_of(refusal.status, is_press);
  return is_ten_foot ? ten_foot_page(refusal, title, links) : browser_page(refusal, title, links);
}

}  // namespace homewarden
