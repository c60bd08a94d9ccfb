#include "ui/qt/window_keys.h"

#include <QShortcut>
#include <QWidget>
#include <functional>
#include <iterator>

#include "ui/fixed_nodes.h"

namespace homewarden::view {
namespace {

// What a person would look for a plus sign for on the page that is shown.
void add_here(FrmMain& form) {
  if (form.frm_devices.visible) {
    form.cmd_adddevice.click();
  } else if (form.frm_event.visible) {
    if (form.Command5.enabled) form.Command5.click();
  } else if (form.frm_macros.visible) {
    form.macro_editor_open = true;
    form.com_sel1.set_focus();
  } else if (form.Tree.enabled && !form.is_first_run) {
    form.Label3.click();
  }
}

}  // namespace

void open_fixed_node(TreeView& tree, std::size_t place) {
  TreeNode* node = tree.find(kFixedNodes[place]);
  if (!node || !tree.enabled) return;
  tree.selected = node;
  tree.click();
}

void add_window_keys(FrmMain& form, QWidget* window) {
  const auto add = [&form, window](const QKeySequence& keys, std::function<void()> act) {
    auto* shortcut = new QShortcut(keys, window);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, window, [&form, act = std::move(act)] {
      if (!form.enabled) return;
      if (form.frm_messages.visible) form.messages_asked();  // it lies over the page
      act();
    });
  };
  for (std::size_t place = 0; place < std::size(kFixedNodes); ++place)
    add(QKeySequence(Qt::ALT | Qt::Key(Qt::Key_1 + static_cast<int>(place))), [&form, place] {
      form.closed();  // the finder, which lies over the page
      open_fixed_node(form.Tree, place);
      form.Tree.set_focus();
    });
  add(Qt::CTRL | Qt::Key_K, [&form] { form.opened(); });
  add(Qt::CTRL | Qt::Key_N, [&form] {
    if (!form.frm_finder.visible) add_here(form);
  });
}

}  // namespace homewarden::view
