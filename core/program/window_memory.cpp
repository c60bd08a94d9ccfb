#include "core/program/window_memory.h"

#include <set>
#include <string>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr char kBetween = '~';  // no room's name has one

}  // namespace

void restore_view(NavigationPane& pane, Settings& settings) {
  TreeView& tree = pane.Tree;
  const int width = to_integer16(settings.read("data", "sidewidth", "")).value_or(0);
  if (width > 0) pane.side_width = width;
  std::set<std::string> open;
  std::string rooms = settings.read("data", "openrooms", "");
  while (!rooms.empty()) {
    const auto end = rooms.find(kBetween);
    const std::string room = rooms.substr(0, end);
    if (tree.find(room)) open.insert(room);
    rooms = end == std::string::npos ? std::string() : rooms.substr(end + 1);
  }
  tree.open_rooms = std::move(open);
  TreeNode* node = tree.find(settings.read("data", "panel", ""));
  if (node && !node->parent) tree.selected = node;
}

void save_view(const NavigationPane& pane, Settings& settings) {
  const TreeView& tree = pane.Tree;
  settings.write("data", "sidewidth", std::to_string(pane.side_width.get()));
  std::string rooms;
  for (const std::string& room : tree.open_rooms.get())
    rooms += (rooms.empty() ? "" : std::string(1, kBetween)) + room;
  settings.write("data", "openrooms", rooms);
  const TreeNode* node = tree.selected;
  if (node && node->parent) node = node->parent;
  settings.write("data", "panel", node ? node->key : std::string());
}

}  // namespace homewarden
