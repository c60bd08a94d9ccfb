#pragma once

#include <cstddef>

#include "ui/frm_main.h"

class QWidget;

namespace homewarden::view {

// The keys that work wherever the keyboard is in the window: Alt+1 to Alt+5 open the fixed nodes,
// Ctrl+K the finder, and Ctrl+N adds what the page is about.
void add_window_keys(FrmMain& form, QWidget* window);

// As a press on the node: 0 to 4, in their order. Nothing while the tree takes no input.
void open_fixed_node(TreeView& tree, std::size_t place);

}  // namespace homewarden::view
