#include "ui/qt/message_list_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/look.h"
#include "ui/qt/message_rows.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kWidest = 440;
constexpr int kMargin = 12;
constexpr int kPadding = 8;
constexpr double kNameFont = 1.14;

int heading_height() {
  return QFontMetrics(scaled_font(kNameFont, true)).height() + 24;
}

// The box, with its heading and what it says while there is nothing to list.
class MessageBox : public QWidget {
 public:
  MessageBox(MessagePanel& panel, QWidget* parent) : QWidget(parent), panel_(panel) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    draw_box(painter, rect(), kCardCorner, look.card, look.line);
    painter.setFont(scaled_font(kNameFont, true));
    painter.setPen(look.text);
    const QRect heading(20, 0, width() - 40, heading_height());
    painter.drawText(heading, Qt::AlignVCenter, tr("Messages"));
    if (!panel_.messages.get().empty()) return;
    painter.setFont(font());
    painter.setPen(look.quiet);
    painter.drawText(rect().adjusted(20, heading_height(), -20, -16),
                     Qt::AlignTop | Qt::TextWordWrap, tr("Nothing has happened yet."));
  }

 private:
  MessagePanel& panel_;
};

}  // namespace

MessageListView::MessageListView(MessagePanel& panel, QWidget* window, QWidget* foot)
    : QWidget(window),
      panel_(panel),
      foot_(foot),
      shadow_(new DropShadow(this)),
      box_(new MessageBox(panel, this)),
      list_(new QListWidget(box_)),
      rows_(new MessageRows(panel, list_)) {
  hide();
  list_->setItemDelegate(rows_);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setResizeMode(QListView::Adjust);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setMouseTracking(true);
  list_->setAccessibleName(tr("Messages"));
  list_->viewport()->setAutoFillBackground(false);
  list_->viewport()->installEventFilter(this);
  list_->installEventFilter(this);
  window->installEventFilter(this);
  follow(panel.messages, this, [this](const auto&) {
    if (isVisible()) show_messages();
  });
  follow(panel.frm_messages.visible, this, [this](bool visible) { open(visible); });
}

void MessageListView::open(bool visible) {
  if (visible == isVisible()) return;
  if (!visible) {
    const bool had_focus = list_->hasFocus();
    if (had_focus && former_ && former_->isVisible()) former_->setFocus(Qt::OtherFocusReason);
    hide();
    list_->clear();
    return;
  }
  former_ = window()->focusWidget();
  setGeometry(parentWidget()->rect());
  show_messages();
  show();
  raise();
  lay_out();
  list_->setFocus(Qt::OtherFocusReason);
}

// A new message moves the others down: the chosen one stays chosen.
void MessageListView::show_messages() {
  const QListWidgetItem* current = list_->currentItem();
  const qulonglong chosen = current ? current->data(Qt::UserRole).toULongLong() : 0;
  list_->clear();
  for (const MessageEntry& message : panel_.messages.get()) {
    auto* item = new QListWidgetItem(list_);
    item->setData(Qt::AccessibleTextRole, MessageRows::spoken(message));
    item->setData(Qt::UserRole, static_cast<qulonglong>(message.id));
    if (message.id == chosen) list_->setCurrentItem(item);
  }
  if (!list_->currentItem()) list_->setCurrentRow(0);
  lay_out();
  box_->update();
}

void MessageListView::lay_out() {
  setGeometry(parentWidget()->rect());
  const int width = std::min(kWidest, this->width() - 2 * kMargin);
  const int heading = heading_height();
  const int bottom = foot_->mapTo(parentWidget(), QPoint()).y() - kMargin;
  const int most = std::max(heading + 80, bottom - kMargin);
  // The rows wrap by the width that they have.
  list_->setGeometry(kPadding, heading, width - 2 * kPadding, 100);
  list_->doItemsLayout();
  int rows = 0;
  for (int row = 0; row < list_->count(); ++row) rows += list_->sizeHintForRow(row);
  if (rows == 0) rows = fontMetrics().height() + 8;
  const int height = std::min(heading + rows + 2 * kPadding, most);
  const QRect place(this->width() - kMargin - width, bottom - height, width, height);
  box_->setGeometry(place);
  list_->setGeometry(kPadding, heading, width - 2 * kPadding, height - heading - kPadding);
  shadow_->put_around(place);
}

void MessageListView::undo(int row) {
  const auto& messages = panel_.messages.get();
  const auto place = static_cast<std::size_t>(row);
  if (row < 0 || place >= messages.size() || !messages[place].undoable) return;
  const auto id = messages[place].id;
  panel_.messages_asked();  // closed, so that what comes of it is seen
  panel_.undo_asked(id);
}

bool MessageListView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible()) lay_out();
  if (watched == list_->viewport() && event->type() == QEvent::MouseButtonRelease) {
    const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
    const QModelIndex index = list_->indexAt(at);
    if (rows_->undo_place(list_->visualRect(index), index).contains(at)) {
      undo(index.row());
      return true;
    }
  }
  if (watched != list_ || event->type() != QEvent::KeyPress) return false;
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:  // nothing under it gets the keyboard
    case Qt::Key_Backtab:
      panel_.messages_asked();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      undo(list_->currentRow());
      return true;
    default:
      return false;
  }
}

void MessageListView::mousePressEvent(QMouseEvent* event) {
  if (!box_->geometry().contains(event->pos())) panel_.messages_asked();
}

}  // namespace homewarden::view
