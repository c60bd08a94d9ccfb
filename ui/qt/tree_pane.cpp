#include "ui/qt/tree_pane.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

#include "ui/key_codes.h"
#include "ui/qt/bindings.h"
#include "ui/qt/disabled_colours.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
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
  watch(tree.selected.changed, this, [this] { selected_changed(); });
  follow(tree.root_lines, this, [this](bool lines) { setRootIsDecorated(lines); });
  connect(this, &QTreeView::expanded, this,
          [this](const QModelIndex& index) { open_rooms_.insert(TreeModel::node_of(index)->key); });
  connect(this, &QTreeView::collapsed, this,
          [this](const QModelIndex& index) { room_closed(index); });
  nodes_changed();
}

void TreePane::nodes_changed() {
  model_->reload();
  for (const std::string& key : open_rooms_)
    if (const TreeNode* room = tree_.find(key)) setExpanded(model_->index_of(room), true);
  // Also when it is none: a tree that was never told selects its first node with the focus.
  setCurrentIndex(model_->index_of(tree_.selected));
}

void TreePane::selected_changed() {
  if (tree_.is_changing()) return;  // shown with the new nodes
  const QModelIndex index = model_->index_of(tree_.selected);
  if (index != currentIndex()) setCurrentIndex(index);
}

// A device that cannot be seen any more must not be what a key acts on.
void TreePane::room_closed(const QModelIndex& room) {
  open_rooms_.erase(TreeModel::node_of(room)->key);
  if (currentIndex().isValid() && currentIndex().parent() == room) setCurrentIndex(room);
}

void TreePane::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  tree_.selected = current.isValid() ? TreeModel::node_of(current) : nullptr;
}

// Also with Ctrl, which would take the mark from the node that is selected.
QItemSelectionModel::SelectionFlags TreePane::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
  if (index.isValid()) return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
  return event ? QItemSelectionModel::NoUpdate : QItemSelectionModel::Clear;
}

void TreePane::click(const QModelIndex& index) {
  if (!index.isValid()) return;
  expand(index);
  tree_.selected = TreeModel::node_of(index);
  tree_.click();
}

void TreePane::keyPressEvent(QKeyEvent* event) {
  if (const int character = character_of(*event)) {
    tree_.key_press(character);
  } else if (presses(*event)) {
    if (!event->isAutoRepeat()) click(currentIndex());  // a key held down switches once
  } else {
    QTreeView::keyPressEvent(event);
  }
}

void TreePane::mousePressEvent(QMouseEvent* event) {
  QTreeView::mousePressEvent(event);
  pressed_.clear();
  if (event->button() != Qt::LeftButton) return;
  // On the arrow that opens and closes a room the button is not over the node.
  const QModelIndex index = indexAt(event->pos());
  if (index.isValid() && visualRect(index).contains(event->pos()))
    pressed_ = TreeModel::node_of(index)->key;
  tree_.mouse_down(kLeftButton);
}

void TreePane::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  const std::string key = std::exchange(pressed_, {});
  const QModelIndex index = indexAt(event->pos());
  if (!key.empty() && index.isValid() && visualRect(index).contains(event->pos()) &&
      TreeModel::node_of(index)->key == key)
    click(index);
}

// Asked for with the right button or the menu key.
void TreePane::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse)
    setCurrentIndex(indexAt(event->pos()));
  else if (currentIndex().isValid())
    scrollTo(currentIndex());  // the menu opens there
  if (currentIndex().isValid()) tree_.mouse_down(kRightButton);
}

}  // namespace homewarden::view
