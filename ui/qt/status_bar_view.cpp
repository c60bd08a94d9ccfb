#include "ui/qt/status_bar_view.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kLight = 10;

// In the colour of the same words on a card, and no higher than the bar.
constexpr const char* kUnsent =
    "QPushButton { padding: 0 6px; border: 1px solid transparent; border-radius: 6px; color: %1;"
    " text-decoration: underline; }"
    "QPushButton:focus { border-color: %1; }";

QPixmap light(const QColor& colour, double ratio) {
  QPixmap pixmap(QSize(kLight, kLight) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(QRectF(0.5, 0.5, kLight - 1, kLight - 1));
  return pixmap;
}

}  // namespace

QSize ElidedLabel::minimumSizeHint() const {
  return QSize(fontMetrics().horizontalAdvance('x') * 8, QLabel::minimumSizeHint().height());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, shown);
}

StatusBarView::StatusBarView(StatusBar& control, QWidget* parent)
    : QStatusBar(parent),
      clock_(new QLabel(this)),
      status_(new ElidedLabel(this)),
      unsent_(make_link(control.unsent, this)),
      light_(new QLabel(this)),
      state_(new ElidedLabel(this)) {
  setSizeGripEnabled(false);
  setStyleSheet("QStatusBar::item { border: none; }");
  setContentsMargins(12, 2, 12, 2);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.86);
  setFont(small);
  for (QLabel* label : {clock_, static_cast<QLabel*>(status_), static_cast<QLabel*>(state_)})
    label->setFont(small);
  unsent_->setFont(small);
  setMinimumHeight(32);
  recolour();
  clock_->setMinimumWidth(clock_->fontMetrics().horizontalAdvance("00:00:00") + 20);
  clock_->setAccessibleName(tr("Clock"));
  status_->setAccessibleName(tr("Status"));
  state_->setAccessibleName(tr("Interface"));
  addWidget(clock_);
  addWidget(status_, 1);
  addPermanentWidget(unsent_);
  addPermanentWidget(light_);
  addPermanentWidget(state_);
  follow(control.panel1, this,
         [this](const std::string& text) { clock_->setText(qt::from_code_page(text)); });
  follow(control.panel2, this, [this](const std::string& text) {
    status_->setText(qt::from_code_page(text));
    status_->setToolTip(tip_text(text));
    status_->setAccessibleDescription(qt::from_code_page(text));
  });
  const auto show = [this, &control](const std::string&) { show_state(control); };
  follow(control.panel3, this, show);
  follow(control.panel3_tip, this, show);
}

void StatusBarView::recolour() {
  unsent_->setStyleSheet(QString(kUnsent).arg(look_of(palette()).failed.name()));
}

void StatusBarView::changeEvent(QEvent* event) {
  QStatusBar::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) recolour();
}

void StatusBarView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  painter.fillRect(rect(), look.side);
  painter.fillRect(QRect(0, 0, width(), 1), look.line);
}

void StatusBarView::resizeEvent(QResizeEvent* event) {
  QStatusBar::resizeEvent(event);
  fit_state();
}

// The state is read before the status line, and leaves it half of the bar.
void StatusBarView::fit_state() {
  state_->setMinimumWidth(std::min(state_->sizeHint().width(), width() / 2));
  state_->setMaximumWidth(state_->minimumWidth());
}

void StatusBarView::show_state(const StatusBar& control) {
  const QString state = qt::from_code_page(control.panel3.get());
  state_->setText(state);
  fit_state();
  light_->setVisible(!state.isEmpty());
  const Look& look = look_of(palette());
  light_->setPixmap(light(state == "STATUS: Ready" ? look.ok : look.failed, devicePixelRatioF()));
  const std::string& more = control.panel3_tip;
  const std::string tip = control.panel3.get() + (more.empty() ? "" : "\n" + more);
  for (QLabel* label : {light_, static_cast<QLabel*>(state_)}) {
    label->setToolTip(tip_text(tip));
    label->setAccessibleDescription(qt::from_code_page(more));
  }
}

}  // namespace homewarden::view
