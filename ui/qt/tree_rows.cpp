#include "ui/qt/tree_rows.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <iterator>

#include "platform/qt/text_codec.h"
#include "ui/fixed_nodes.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/tree_model.h"

namespace homewarden::view {
namespace {

constexpr int kRow = 36;
constexpr int kDeviceRow = 32;
constexpr int kMargin = 12;
constexpr int kSign = 20;
constexpr int kArrow = 16;
constexpr int kDot = 10;
constexpr int kBadge = 20;
constexpr int kPlus = 32;
constexpr int kNamesMargin = 120;  // arrow, badge or level, and the margins, at the most

struct Fixed {
  const char* name;
  LineIcon icon;
};

constexpr Fixed kFixed[] = {{kHome, LineIcon::kHome},
                            {kEvents, LineIcon::kClock},
                            {kMacros, LineIcon::kMacros},
                            {kWebServer, LineIcon::kWeb},
                            {kProfiles, LineIcon::kProfiles}};

const Fixed* fixed_of(const TreeNode& node) {
  if (node.parent) return nullptr;
  const auto* found = std::find_if(std::begin(kFixed), std::end(kFixed),
                                   [&node](const Fixed& fixed) { return node.key == fixed.name; });
  return found == std::end(kFixed) ? nullptr : found;
}

bool is_room(const TreeNode& node) {
  return !node.parent && !fixed_of(node);
}

int row_height(const TreeNode& node, const QFontMetrics& metrics) {
  return std::max(node.parent ? kDeviceRow : kRow, metrics.height() + 12);
}

QFont small(const QFont& font) {
  return scaled_font(font, 0.86);
}

// What is drawn of one row, its colours and its place without the margins at the sides.
struct Canvas {
  QPainter& painter;
  const QWidget& tree;
  const Look& look;
  QRect place;

  QRectF square(int left, int side) const {
    return centred(QRectF(left, place.top(), side, place.height()), side);
  }
  void words(int left, int right, const QString& text, const QColor& colour) const {
    painter.setPen(colour);
    const QRect room(left, place.top(), right - left, place.height());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
  }
};

void draw_caption(const Canvas& canvas, const TreeRows::Row& row) {
  const QRect caption(row.place.left(), row.place.top(), row.place.width(), row.caption);
  QPainter& painter = canvas.painter;
  painter.setFont(small(canvas.tree.font()));
  painter.setPen(canvas.look.quiet);
  painter.drawText(caption.adjusted(kMargin + 8, 8, -kPlus, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   tr("Rooms"));
  const QRect plus = TreeRows::plus_place(caption);
  if (row.plus_over || row.plus_pressed)
    draw_box(painter, plus, kControlCorner, row.plus_pressed ? canvas.look.press : canvas.look.over,
             Qt::transparent);
  draw_icon(painter, LineIcon::kPlus, centred(plus, kSign), canvas.look.quiet);
}

void draw_badge(const Canvas& canvas, int right, int count) {
  const QString text = QString::number(count);
  QFont font = small(canvas.tree.font());
  font.setBold(true);
  canvas.painter.setFont(font);
  const int width = std::max(kBadge, canvas.painter.fontMetrics().horizontalAdvance(text) + 12);
  const int height = std::max(kBadge, canvas.painter.fontMetrics().height() + 4);
  const QRect badge(right - width, canvas.place.center().y() - height / 2 + 1, width, height);
  draw_box(canvas.painter, badge, height / 2.0, canvas.look.amber, canvas.look.line_on);
  canvas.painter.setPen(canvas.look.ink);
  canvas.painter.drawText(badge, Qt::AlignCenter, text);
}

void draw_dot(const Canvas& canvas, int left, bool on) {
  const QRectF dot = canvas.square(left, kDot);
  if (on)
    draw_box(canvas.painter, dot, kDot / 2.0, canvas.look.amber, canvas.look.line_on, 1.5);
  else
    draw_box(canvas.painter, dot, kDot / 2.0, Qt::transparent, canvas.look.edge, 1.5);
}

void draw_device(const Canvas& canvas, const TreeNode& node) {
  draw_dot(canvas, canvas.place.left() + 40, node.level.value_or(0) > 0);
  const QString level = level_words(node);
  canvas.painter.setFont(small(canvas.tree.font()));
  const int words = canvas.painter.fontMetrics().horizontalAdvance(level);
  const int right = canvas.place.right() - 8;
  canvas.words(right - words, right + 1, level, canvas.look.quiet);
  canvas.painter.setFont(canvas.tree.font());
  canvas.words(canvas.place.left() + 62, right - words - (words > 0 ? 8 : 0),
               qt::from_code_page(node.text), canvas.look.text);
}

void draw_root(const Canvas& canvas, const TreeRows::Row& row, const TreeNode& node) {
  const int left = canvas.place.left() + 8;
  int right = canvas.place.right() - 8;
  if (const Fixed* fixed = fixed_of(node)) {
    draw_icon(canvas.painter, fixed->icon, canvas.square(left, kSign),
              row.selected ? canvas.look.text : canvas.look.quiet);
  } else {
    if (!node.children.empty())
      draw_icon(canvas.painter, row.open ? LineIcon::kDown : LineIcon::kRight,
                canvas.square(left + (kSign - kArrow) / 2, kArrow), canvas.look.quiet);
    const int on = count_on(node);
    if (on > 0) {
      draw_badge(canvas, canvas.place.right() - 3, on);
      right -= 28;
    }
  }
  QFont font = canvas.tree.font();
  font.setBold(row.selected);
  canvas.painter.setFont(font);
  canvas.words(left + 32, right, qt::from_code_page(node.text), canvas.look.text);
}

}  // namespace

void TreeRows::draw(QPainter& painter, const QWidget& tree, const Row& row, const TreeNode& node) {
  const Look& look = look_of(tree.palette());
  const QRect line = row.place.adjusted(kMargin, row.caption, -kMargin, 0);
  const Canvas canvas{painter, tree, look, line};
  if (row.caption > 0) draw_caption(canvas, row);
  if (row.selected || row.over)
    draw_box(painter, line, kControlCorner, row.selected ? look.selected : look.over,
             Qt::transparent);
  if (row.selected)
    draw_box(painter, QRectF(line.left(), line.top() + 8, 3, line.height() - 16), 1.5, look.focus,
             Qt::transparent);
  if (row.focus) draw_box(painter, line, kControlCorner, Qt::transparent, look.focus, 2);
  if (node.parent)
    draw_device(canvas, node);
  else
    draw_root(canvas, row, node);
}

bool TreeRows::has_arrow(const QModelIndex& index) {
  const TreeNode& node = *TreeModel::node_of(index);
  return !node.parent && !node.children.empty();
}

int TreeRows::caption_height(const QModelIndex& index, const QWidget& tree) {
  const TreeNode& node = *TreeModel::node_of(index);
  if (!is_room(node)) return 0;
  const QModelIndex above = index.siblingAtRow(index.row() - 1);
  const bool is_first = !above.isValid() || fixed_of(*TreeModel::node_of(above));
  return is_first ? std::max(kRow, tree.fontMetrics().height() + 12) : 0;
}

QRect TreeRows::plus_place(const QRect& caption) {
  return {caption.right() - kMargin - kPlus + 1, caption.bottom() - kPlus, kPlus, kPlus};
}

// Which keys open a fixed node; of a room or a device the name when there is no room for all of it.
bool TreeRows::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                         const QStyleOptionViewItem& /*option*/, const QModelIndex& index) {
  QString tip;
  if (index.isValid()) {
    const TreeNode& node = *TreeModel::node_of(index);
    const QRect row = view->visualRect(index);
    const QRect caption(0, row.top() - caption_height(index, *view), view->viewport()->width(),
                        caption_height(index, *view));
    const QString name = qt::from_code_page(node.text);
    if (event->pos().y() < row.top())
      tip = plus_place(caption).contains(event->pos()) ? tr("Add a new room") : QString();
    else if (const Fixed* fixed = fixed_of(node))
      tip = tr("%1 (Alt+%2)").arg(name).arg(fixed - kFixed + 1);
    else if (view->fontMetrics().horizontalAdvance(name) > caption.width() - kNamesMargin)
      tip = tip_text(name);
  }
  QToolTip::showText(event->globalPos(), tip, view);
  return true;
}

QSize TreeRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto& tree = *qobject_cast<const QWidget*>(parent());
  const int height = row_height(*TreeModel::node_of(index), option.fontMetrics);
  return {100, height + caption_height(index, tree)};
}

}  // namespace homewarden::view
