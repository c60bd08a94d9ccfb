#include "ui/qt/finder_view.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/qt/bindings.h"
#include "ui/qt/finder_rows.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kWidth = 640;
constexpr int kMargin = 24;
constexpr int kTop = 96;
constexpr int kFieldHeight = 64;
constexpr int kFootHeight = 44;
constexpr double kFieldFont = 1.43;
constexpr double kSmall = 0.86;

// The box with its field, its list and a line that says which keys do what.
class Box : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    draw_box(painter, rect(), kCardCorner, look.card, look.line);
    draw_icon(painter, LineIcon::kSearch, QRectF(20, (kFieldHeight - 20) / 2.0, 20, 20),
              look.quiet);
    painter.fillRect(QRect(1, kFieldHeight, width() - 2, 1), look.line);
    painter.fillRect(QRect(1, height() - kFootHeight, width() - 2, 1), look.line);
    painter.setFont(scaled_font(kSmall));
    painter.setPen(look.quiet);
    const QRect foot(20, height() - kFootHeight, width() - 40, kFootHeight);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(
                         tr("\u2191 \u2193 Choose    Enter Do it    Ctrl+Enter Show it in its "
                            "room    Esc Leave"),
                         Qt::ElideRight, foot.width()));
  }
};

}  // namespace

FinderView::FinderView(FinderPanel& panel, QWidget* window)
    : QWidget(window),
      panel_(panel),
      box_(new Box(this)),
      field_(new QLineEdit(box_)),
      list_(new QListWidget(box_)),
      nothing_(new ScaledLabel(1, false, ScaledLabel::Tone::kQuiet, box_)) {
  hide();
  build();
  window->installEventFilter(this);
  bind(panel.lab_nothing, nothing_);
  bind(panel.txt_find, field_, tr("Find anything"));
  follow(panel.found, this, [this](const std::vector<Found>&) { show_found(); });
  follow(panel.chosen, this, [this](int position) { list_->setCurrentRow(position); });
  follow(panel.frm_finder.visible, this, [this](bool visible) {
    if (visible) {
      lay_out();
      if (!isVisible()) former_ = this->window()->focusWidget();
    } else if (field_->hasFocus() && former_ && former_->isVisible()) {
      former_->setFocus(Qt::OtherFocusReason);  // else Qt gives it to what comes next
    }
    setVisible(visible);
    if (visible) raise();
    if (visible) field_->setFocus(Qt::ShortcutFocusReason);
  });
  connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    choose(list_->row(item));
    panel_.do_it();
  });
}

void FinderView::build() {
  field_->setFrame(false);
  field_->setPlaceholderText(tr("A lamp and \"off\", a room, an event"));
  QPalette clear = field_->palette();
  clear.setColor(QPalette::Base, Qt::transparent);
  field_->setPalette(clear);
  field_->installEventFilter(this);
  list_->setItemDelegate(new FinderRows(panel_, list_));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setMouseTracking(true);
  list_->setAccessibleName(tr("What was found"));
  list_->viewport()->setAutoFillBackground(false);
}

void FinderView::lay_out() {
  setGeometry(parentWidget()->rect());
  field_->setFont(scaled_font(kFieldFont));
  int rows = 0;
  for (int row = 0; row < list_->count(); ++row) rows += list_->sizeHintForRow(row);
  const int width = std::min(kWidth, this->width() - 2 * kMargin);
  const int top = std::min(kTop, height() / 8);
  const int most = height() - top - kMargin - kFieldHeight - kFootHeight;
  const int list = std::clamp(rows + 16, 56, std::max(56, most));
  box_->setGeometry((this->width() - width) / 2, top, width, kFieldHeight + list + kFootHeight);
  field_->setGeometry(52, 8, width - 68, kFieldHeight - 16);
  list_->setGeometry(8, kFieldHeight + 8, width - 16, list - 16 + 4);
  nothing_->setGeometry(20, kFieldHeight, width - 40, list);
}

void FinderView::show_found() {
  list_->clear();
  for (const Found& found : panel_.found.get()) {
    auto* item = new QListWidgetItem(list_);
    item->setData(Qt::AccessibleTextRole, FinderRows::spoken(found));
  }
  list_->setCurrentRow(panel_.chosen);
  lay_out();
}

void FinderView::choose(int position) {
  const int last = static_cast<int>(panel_.found.get().size()) - 1;
  if (last < 0) return;
  panel_.chosen = std::clamp(position, 0, last);
  list_->scrollToItem(list_->item(panel_.chosen));
}

bool FinderView::take_key(int key, Qt::KeyboardModifiers modifiers) {
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Backtab:  // nothing under the scrim gets the keyboard
      choose(panel_.chosen - 1);
      return true;
    case Qt::Key_Down:
    case Qt::Key_Tab:
      choose(panel_.chosen + 1);
      return true;
    case Qt::Key_Escape:
      panel_.closed();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if ((modifiers & Qt::ControlModifier) != 0)
        panel_.show_it();
      else
        panel_.do_it();
      return true;
    default:
      return false;
  }
}

bool FinderView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible()) lay_out();
  if (watched != field_ || event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool does = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  return does && key->isAutoRepeat() ? false : take_key(key->key(), key->modifiers());
}

void FinderView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), look_of(palette()).scrim);
}

void FinderView::mousePressEvent(QMouseEvent* event) {
  if (!box_->geometry().contains(event->pos())) panel_.closed();
}

}  // namespace homewarden::view
