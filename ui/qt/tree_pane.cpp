#include "ui/qt/tree_pane.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <utility>

#include "ui/key_codes.h"
#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/tree_rows.h"
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

TreePane::TreePane(TreeView& tree, std::function<void()> add_room, QWidget* parent)
    : QTreeView(parent),
      tree_(tree),
      model_(new TreeModel(tree, this)),
      add_room_(std::move(add_room)) {
  setModel(model_);
  setItemDelegate(new TreeRows(this));
  setHeaderHidden(true);
  setFrameShape(QFrame::NoFrame);
  setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  setEditTriggers(NoEditTriggers);
  setExpandsOnDoubleClick(false);
  setIndentation(TreeRows::kIndentation);
  bind_common(tree, this, tr("Rooms and devices"));
  watch(tree.nodes_changed, this, [this] { nodes_changed(); });
  watch(tree.level_changed, this, [this](const TreeNode& node) {
    model_->show_level(node);
    viewport()->update();  // a row reaches beyond what Qt takes for it
  });
  watch(tree.selected.changed, this, [this] { selected_changed(); });
  follow(tree.root_lines, this, [this](bool lines) { setRootIsDecorated(lines); });
  watch(tree.open_rooms.changed, this, [this] { show_open_rooms(); });
  connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
    auto open = tree_.open_rooms.get();
    open.insert(TreeModel::node_of(index)->key);
    tree_.open_rooms = std::move(open);
  });
  connect(this, &QTreeView::collapsed, this,
          [this](const QModelIndex& index) { room_closed(index); });
  nodes_changed();
}

void TreePane::nodes_changed() {
  model_->reload();
  show_open_rooms();
  // Also when it is none: a tree that was never told selects its first node with the focus.
  setCurrentIndex(model_->index_of(tree_.selected));
}

void TreePane::show_open_rooms() {
  if (tree_.is_changing()) return;  // shown with the new nodes
  const auto open = tree_.open_rooms.get();
  for (const auto& room : tree_.roots())
    setExpanded(model_->index_of(room.get()), open.contains(room->key));
}

void TreePane::selected_changed() {
  if (tree_.is_changing()) return;  // shown with the new nodes
  const QModelIndex index = model_->index_of(tree_.selected);
  if (index != currentIndex()) setCurrentIndex(index);
}

// A device that cannot be seen any more must not be what a key acts on.
void TreePane::room_closed(const QModelIndex& room) {
  auto open = tree_.open_rooms.get();
  open.erase(TreeModel::node_of(room)->key);
  tree_.open_rooms = std::move(open);
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

// What is selected at the start is seen.
void TreePane::showEvent(QShowEvent* event) {
  QTreeView::showEvent(event);
  QTimer::singleShot(0, this, [this] { scrollTo(currentIndex()); });
}

void TreePane::keyPressEvent(QKeyEvent* event) {
  if (const int character = character_of(*event)) {
    tree_.key_press(character);
  } else if (event->key() == Qt::Key_F2) {
    tree_.rename_asked();
  } else if (presses(*event)) {
    if (!event->isAutoRepeat()) click(currentIndex());  // a key held down switches once
  } else {
    QTreeView::keyPressEvent(event);
  }
}

QRect TreePane::visualRect(const QModelIndex& index) const {
  QRect row = QTreeView::visualRect(index);
  if (index.isValid() && row.isValid())
    row.setTop(row.top() + TreeRows::caption_height(index, *this));
  return row;
}

// The node that a press there means. None on the arrow that opens and closes a room, and none on
// the caption above the first room.
QModelIndex TreePane::node_at(const QPoint& place) const {
  const QModelIndex index = indexAt(place);
  if (!index.isValid()) return {};
  QRect row = visualRect(index);
  if (!TreeRows::has_arrow(index)) row.setLeft(0);
  return row.contains(place) ? index : QModelIndex();
}

QRect TreePane::plus_place() const {
  for (int row = 0; row < model_->rowCount({}); ++row) {
    const QModelIndex index = model_->index(row, 0, {});
    if (TreeRows::caption_height(index, *this) == 0) continue;
    const int height = TreeRows::caption_height(index, *this);
    const QRect caption(0, visualRect(index).top() - height, viewport()->width(), height);
    return TreeRows::plus_place(caption);
  }
  return {};
}

void TreePane::mousePressEvent(QMouseEvent* event) {
  plus_pressed_ = event->button() == Qt::LeftButton && plus_place().contains(event->pos());
  const QModelIndex under = indexAt(event->pos());
  const bool on_caption = under.isValid() && event->pos().y() < visualRect(under).top();
  if (on_caption) return viewport()->update();
  QTreeView::mousePressEvent(event);
  pressed_.clear();
  if (event->button() != Qt::LeftButton) return;
  const QModelIndex index = node_at(event->pos());
  if (index.isValid()) pressed_ = TreeModel::node_of(index)->key;
  tree_.mouse_down(kLeftButton);
}

void TreePane::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  if (std::exchange(plus_pressed_, false)) {
    viewport()->update();
    if (plus_place().contains(event->pos())) add_room_();
    return;
  }
  const std::string key = std::exchange(pressed_, {});
  const QModelIndex index = node_at(event->pos());
  if (!key.empty() && index.isValid() && TreeModel::node_of(index)->key == key) click(index);
}

void TreePane::mouseMoveEvent(QMouseEvent* event) {
  QTreeView::mouseMoveEvent(event);
  hover(event->pos());
}

void TreePane::leaveEvent(QEvent* event) {
  QTreeView::leaveEvent(event);
  hover({-1, -1});
}

void TreePane::hover(const QPoint& place) {
  const QModelIndex index = node_at(place);
  const bool on_plus = plus_place().contains(place);
  if (hovered_ == index && plus_hovered_ == on_plus) return;
  hovered_ = index;
  plus_hovered_ = on_plus;
  viewport()->setCursor(on_plus ? Qt::PointingHandCursor : Qt::ArrowCursor);
  viewport()->update();
}

void TreePane::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  TreeRows::Row row;
  row.place = QRect(0, option.rect.top(), viewport()->width(), option.rect.height());
  row.caption = TreeRows::caption_height(index, *this);
  row.selected = index == currentIndex();
  row.over = index == hovered_;
  row.open = isExpanded(index);
  row.focus = row.selected && hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange);
  row.plus_over = plus_hovered_;
  row.plus_pressed = plus_pressed_;
  TreeRows::draw(*painter, *this, row, *TreeModel::node_of(index));
}

// A row draws its arrow itself.
void TreePane::drawBranches(QPainter* /*painter*/, const QRect& /*rect*/,
                            const QModelIndex& /*index*/) const {}

// Asked for with the right button or the menu key.
void TreePane::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse)
    setCurrentIndex(indexAt(event->pos()));
  else if (currentIndex().isValid())
    scrollTo(currentIndex());  // the menu opens there
  if (currentIndex().isValid()) tree_.mouse_down(kRightButton);
}

}  // namespace homewarden::view
