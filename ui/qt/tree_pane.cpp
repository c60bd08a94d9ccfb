#include "ui/qt/tree_pane.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

#include "ui/key_codes.h"
#include "ui/qt/bindings.h"
#include "ui/qt/disabled_colours.h"
#include "ui/qt/watch.h"

namespace homewarden {
namespace {

// The character that the program hears of; 0 for keys that only the tree has to do with.
int character_of(const QKeyEvent& event) {
  if (event.key() == Qt::Key_D && event.modifiers() == Qt::ControlModifier) return kControlD;
  if (event.key() == Qt::Key_Delete) return kDelete;
  if (event.key() == Qt::Key_Backspace) return kBackSpace;
  return 0;
}

bool presses(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
         event.key() == Qt::Key_Space;
}

}  // namespace

TreePane::TreePane(TreeView& tree, QWidget* parent)
    : QTreeView(parent), tree_(tree), model_(new TreeModel(tree, this)) {
  setModel(model_);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIconSize(QSize(20, 20));
  setFrameShape(QFrame::NoFrame);
  setEditTriggers(NoEditTriggers);
  setExpandsOnDoubleClick(false);
  setIndentation(18);
  setTextElideMode(Qt::ElideRight);
  setStyleSheet("QTreeView::item { padding: 2px; }");
  setMinimumWidth(170);
  keep_readable_when_disabled(this, QPalette::Base);
  bind_common(tree, this, tr("Rooms and devices"));
  watch(tree.nodes_changed, this, [this] { nodes_changed(); });
  watch(tree.selected.changed, this, [this] { select(model_->index_of(tree_.selected)); });
  follow(tree.root_lines, this, [this](bool lines) { setRootIsDecorated(lines); });
  connect(this, &QTreeView::expanded, this,
          [this](const QModelIndex& index) { open_rooms_.insert(TreeModel::node_of(index)->key); });
  connect(this, &QTreeView::collapsed, this,
          [this](const QModelIndex& index) { open_rooms_.erase(TreeModel::node_of(index)->key); });
  nodes_changed();
}

void TreePane::nodes_changed() {
  model_->reload();
  for (const std::string& key : open_rooms_)
    if (const TreeNode* room = tree_.find(key)) setExpanded(model_->index_of(room), true);
  select(model_->index_of(tree_.selected));
}

void TreePane::select(const QModelIndex& index) {
  if (index == currentIndex()) return;
  const bool by_keyboard = std::exchange(keyboard_, false);
  setCurrentIndex(index);
  keyboard_ = by_keyboard;
}

void TreePane::press(const QModelIndex& index) {
  if (!index.isValid()) return;
  expand(index);
  tree_.selected = TreeModel::node_of(index);
  tree_.click();
}

void TreePane::keyPressEvent(QKeyEvent* event) {
  if (const int character = character_of(*event)) {
    tree_.key_press(character);
    return;
  }
  if (presses(*event)) return press(currentIndex());
  keyboard_ = true;
  QTreeView::keyPressEvent(event);
  keyboard_ = false;
}

void TreePane::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  if (!current.isValid()) return;
  TreeNode* node = TreeModel::node_of(current);
  tree_.selected = node;
  if (std::exchange(keyboard_, false) && !node->parent) tree_.click();
}

void TreePane::mousePressEvent(QMouseEvent* event) {
  QTreeView::mousePressEvent(event);
  pressed_ = event->button() == Qt::LeftButton ? indexAt(event->pos()) : QModelIndex();
  if (event->button() == Qt::LeftButton) tree_.mouse_down(kLeftButton);
}

void TreePane::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  const QModelIndex index = indexAt(event->pos());
  // On the arrow that opens and closes a room the button is not over the node.
  if (event->button() != Qt::LeftButton || index != std::exchange(pressed_, QModelIndex())) return;
  if (index.isValid() && visualRect(index).contains(event->pos())) press(index);
}

// Asked for with the right button or the menu key.
void TreePane::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) select(indexAt(event->pos()));
  tree_.mouse_down(kRightButton);
}

}  // namespace homewarden
