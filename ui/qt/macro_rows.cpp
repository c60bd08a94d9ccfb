#include "ui/qt/macro_rows.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/row_mark.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kGap = 12;
constexpr int kSide = 16;
constexpr int kDot = 10;
constexpr int kReach = 12;

QFont small(const QFont& font) {
  return scaled_font(font, 0.86);
}

QFont bold(QFont font) {
  font.setBold(true);
  return font;
}

QString in_room(const char* word, const MacroFace::End& end) {
  const QString begin = tr(word);
  return end.room.empty() ? begin
                          : begin + QStringLiteral(" \u00b7 ") + qt::from_code_page(end.room);
}

class Cards : public QStyledItemDelegate {
 public:
  Cards(const MacroPanel& panel, QListWidget& list)
      : QStyledItemDelegate(&list), panel_(panel), list_(list) {}

  QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const override {
    const int end = end_height();
    int height = is_tall(index.row()) ? 2 * end + kGap + std::max(20, line()) : end;
    if (!warning(index.row()).isEmpty()) height += line() + 4;
    return {10, std::max(72, height + 2 * kGap) + kGap};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const Look& look = look_of(list_.palette());
    const QRect card = option.rect.adjusted(kReach, 0, -kReach, -kGap);
    const bool over = (option.state & QStyle::State_MouseOver) != 0;
    draw_box(*painter, card, kBoxCorner, over ? look.over : look.card,
             over ? look.edge : look.line);
    if (list_.hasFocus() && list_.currentIndex() == index &&
        (option.state & QStyle::State_KeyboardFocusChange) != 0)
      draw_focus(*painter, card, kBoxCorner, look);
    const auto row = static_cast<std::size_t>(index.row());
    const auto& faces = panel_.macrofaces.get();
    QRect room = card.adjusted(kSide, kGap, -kSide, -kGap);
    const QString why = warning(index.row());
    if (!why.isEmpty()) {
      const QRect place(room.left(), room.bottom() - line(), room.width(), line());
      draw_icon(*painter, LineIcon::kWarning, QRectF(place.left(), place.top(), line(), line()),
                look.failed);
      words(*painter, place.adjusted(line() + 6, 0, 0, 0), why, small(list_.font()), look.failed);
      room.setBottom(room.bottom() - line() - 4);
    }
    const bool tall = is_tall(index.row());
    room.setRight(draw_delete(*painter, room, over, tall) - kGap);
    if (row < faces.size() && !faces[row].trigger.device.empty())
      draw_ends(*painter, room, faces[row], tall);
    else
      words(*painter, room, index.data().toString(), list_.font(), look.text);
  }

  QString warning(int row) const {
    const auto& marks = panel_.ListVIew2.marks.get();
    const auto found = marks.find(row);
    return found == marks.end() ? QString() : qt::from_code_page(found->second);
  }

 private:
  int line() const { return list_.fontMetrics().height(); }
  int end_height() const { return line() + QFontMetrics(small(list_.font())).height() + 4; }
  int delete_width() const {
    return list_.fontMetrics().horizontalAdvance(tr("Delete")) + line() + 6;
  }

  // The target stands below the trigger where the two have no room side by side.
  bool is_tall(int row) const {
    const int width = list_.viewport()->width();
    if (width < list_.fontMetrics().averageCharWidth() * 62) return true;
    const auto& faces = panel_.macrofaces.get();
    if (static_cast<std::size_t>(row) >= faces.size()) return false;
    const int room = width - 2 * kReach - 2 * kSide - delete_width() - kGap;
    const int half = (room - std::max(20, line()) - 2 * kGap) / 2;
    const MacroFace& face = faces[static_cast<std::size_t>(row)];
    return end_width(face.trigger, {}) > half || end_width(face.target, tr("Turn") + " ") > half;
  }

  int end_width(const MacroFace::End& end, const QString& before) const {
    const QString after = " " + qt::from_code_page(end.words);
    return kDot + kGap + list_.fontMetrics().horizontalAdvance(before + after) + 4 +
           QFontMetrics(bold(list_.font())).horizontalAdvance(qt::from_code_page(end.device));
  }

  static int words(QPainter& painter, const QRect& room, const QString& text, const QFont& font,
                   const QColor& colour) {
    painter.setFont(font);
    painter.setPen(colour);
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
    return std::min(metrics.horizontalAdvance(shown), room.width());
  }

  // Where it begins.
  int draw_delete(QPainter& painter, const QRect& room, bool over, bool tall) const {
    const Look& look = look_of(list_.palette());
    const QString word = tr("Delete");
    QFont font = list_.font();
    font.setUnderline(over);
    const int wide = QFontMetrics(font).horizontalAdvance(word);
    const int left = room.right() - delete_width();
    const QRect place(left, room.top(), line(), tall ? end_height() : room.height());
    draw_icon(painter, LineIcon::kTrash, centred(place, line()), look.failed);
    words(painter, {left + line() + 6, place.top(), wide + 2, place.height()}, word, font,
          look.failed);
    return left;
  }

  void draw_ends(QPainter& painter, QRect room, const MacroFace& face, bool tall) const {
    const Look& look = look_of(list_.palette());
    const int side = std::max(20, line());
    const QString trigger = " " + qt::from_code_page(face.trigger.words);
    const QString action = " " + qt::from_code_page(face.target.words);
    if (tall) {
      const int end = end_height();
      draw_end(painter, {room.left(), room.top(), room.width(), end}, in_room("When", face.trigger),
               {}, face.trigger, trigger);
      const QRectF arrow(room.left(), room.top() + end + kGap / 2.0, side, side);
      painter.save();
      painter.translate(arrow.center());
      painter.rotate(90);
      draw_icon(painter, LineIcon::kMove, QRectF(-side / 2.0, -side / 2.0, side, side), look.quiet);
      painter.restore();
      room.setRight(room.right() + list_.fontMetrics().horizontalAdvance(tr("Delete")) + side);
      draw_end(painter, {room.left(), room.bottom() - end, room.width(), end},
               in_room("Then", face.target), tr("Turn") + " ", face.target, action);
      return;
    }
    const int half = (room.width() - side - 2 * kGap) / 2;
    draw_end(painter, {room.left(), room.top(), half, room.height()}, in_room("When", face.trigger),
             {}, face.trigger, trigger);
    const QRect arrow(room.left() + half + kGap, room.top(), side, room.height());
    draw_icon(painter, LineIcon::kMove, centred(arrow, side), look.quiet);
    draw_end(painter, {arrow.right() + kGap, room.top(), half, room.height()},
             in_room("Then", face.target), tr("Turn") + " ", face.target, action);
  }

  void draw_end(QPainter& painter, QRect room, const QString& caption, const QString& before,
                const MacroFace::End& end, const QString& after) const {
    const Look& look = look_of(list_.palette());
    const QRectF dot = centred(QRectF(room.left(), room.top(), kDot, room.height()), kDot);
    draw_box(painter, dot, kDot / 2.0, end.on ? look.amber : QColor(Qt::transparent),
             end.on ? look.line_on : look.edge, 1.5);
    room.setLeft(room.left() + kDot + kGap);
    const int above = QFontMetrics(small(list_.font())).height();
    const int top = room.center().y() - (above + line() + 2) / 2;
    words(painter, {room.left(), top, room.width(), above}, caption, small(list_.font()),
          look.quiet);
    QRect rest(room.left(), top + above + 2, room.width(), line());
    rest.setLeft(rest.left() + words(painter, rest, before, list_.font(), look.text));
    QRect name = rest;  // a long one leaves room for what happens to it
    name.setRight(
        std::max(name.left(), rest.right() - list_.fontMetrics().horizontalAdvance(after) - 2));
    const QString device = qt::from_code_page(end.device);
    rest.setLeft(rest.left() + words(painter, name, device, bold(list_.font()), look.text));
    words(painter, rest, after, list_.font(), look.text);
  }

  const MacroPanel& panel_;
  QListWidget& list_;
};

}  // namespace

MacroRows::MacroRows(MacroPanel& panel, QWidget* parent) : QListWidget(parent), panel_(panel) {
  setFrameShape(NoFrame);
  viewport()->setAutoFillBackground(false);
  viewport()->setAttribute(Qt::WA_Hover);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setItemDelegate(new Cards(panel, *this));
  bind(panel.ListVIew2, this, tr("Macros"));
  follow(panel.macrofaces, this, [this](const auto&) { speak(); });
  watch(panel.ListVIew2.items.changed, this, [this] { speak(); });
  watch(panel.ListVIew2.marks.changed, this, [this] { speak(); });
}

// The sentence instead of the line, with what is wrong.
void MacroRows::speak() {
  const auto& faces = panel_.macrofaces.get();
  for (int row = 0; row < count() && row < static_cast<int>(faces.size()); ++row) {
    const MacroFace& face = faces[static_cast<std::size_t>(row)];
    if (face.trigger.device.empty()) continue;
    const QString sentence =
        tr("When %1 %2, turn %3 %4")
            .arg(qt::from_code_page(face.trigger.device), qt::from_code_page(face.trigger.words),
                 qt::from_code_page(face.target.device), qt::from_code_page(face.target.words));
    const auto mark = panel_.ListVIew2.marks.get().find(row);
    item(row)->setData(Qt::AccessibleTextRole,
                       mark == panel_.ListVIew2.marks.get().end()
                           ? sentence
                           : marked_text(sentence, qt::from_code_page(mark->second)));
  }
  scheduleDelayedItemsLayout();
}

void MacroRows::keyPressEvent(QKeyEvent* event) {
  const bool asks = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Return ||
                    event->key() == Qt::Key_Enter ||
                    (event->key() == Qt::Key_D && event->modifiers() == Qt::ControlModifier);
  if (asks && currentItem()) return panel_.ListVIew2.mouse_down();
  QListWidget::keyPressEvent(event);
}

// Whoever comes with the keyboard starts at the first one.
void MacroRows::focusInEvent(QFocusEvent* event) {
  QListWidget::focusInEvent(event);
  const bool by_key =
      event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (by_key && !currentItem() && count() > 0) setCurrentRow(0);
}

void MacroRows::resizeEvent(QResizeEvent* event) {
  QListWidget::resizeEvent(event);
  scheduleDelayedItemsLayout();
}

void MacroRows::changeEvent(QEvent* event) {
  QListWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) scheduleDelayedItemsLayout();
}

}  // namespace homewarden::view
