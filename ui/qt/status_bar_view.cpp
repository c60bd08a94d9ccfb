#include "ui/qt/status_bar_view.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"
#include "ui/status_words.h"

namespace homewarden::view {
namespace {

constexpr int kLight = 10;
constexpr int kLeastName = 8;  // letters of a name that are left of it
// Below this width, at letters of kUsualLetter pixels, the bell has no word.
constexpr int kNarrow = 760;
constexpr int kUsualLetter = 14;

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

void ElidedLabel::set_text(const QString& subject, const QString& text) {
  subject_ = subject;
  setText(text);
  update();
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int alignment = Qt::AlignLeft | Qt::AlignVCenter;
  const QString colon = subject_.isEmpty() ? QString() : QString(": ");
  const int left_over = width() - fontMetrics().horizontalAdvance(colon + text());
  const int least = std::min(fontMetrics().horizontalAdvance('x') * kLeastName, width() / 3);
  const int most = text().isEmpty() ? width() : std::max(left_over, least);
  const QString subject = fontMetrics().elidedText(subject_, Qt::ElideRight, most) + colon;
  painter.drawText(rect(), alignment, subject);
  const int left = fontMetrics().horizontalAdvance(subject);
  if (!subject_.isEmpty()) painter.setPen(look_of(palette()).quiet);
  const QRect rest = rect().adjusted(left, 0, 0, 0);
  painter.drawText(rest, alignment, fontMetrics().elidedText(text(), Qt::ElideRight, rest.width()));
}

StatusBarView::StatusBarView(StatusBar& control, MessagePanel& messages, QWidget* parent)
    : QStatusBar(parent),
      clock_(new QLabel(this)),
      status_(new ElidedLabel(this)),
      unsent_(new LinkButton(control.unsent, 0.86, std::nullopt, this)),
      light_(new QLabel(this)),
      state_(new ElidedLabel(this)),
      bell_(new BellButton(messages, this)) {
  setSizeGripEnabled(false);
  unsent_->set_failed();
  setContentsMargins(12, 2, 0, 2);
  setMinimumHeight(32);
  resize_words();
  clock_->setAccessibleName(tr("Clock"));
  status_->setAccessibleName(tr("Status"));
  state_->setAccessibleName(tr("Interface"));
  addWidget(clock_);
  addWidget(status_, 1);
  addPermanentWidget(unsent_);
  addPermanentWidget(light_);
  addPermanentWidget(state_);
  addPermanentWidget(bell_);
  follow(control.panel1, this,
         [this](const std::string& text) { clock_->setText(qt::from_code_page(text)); });
  const auto show_status = [this, &control](const std::string&) {
    const std::string& subject = control.subject;
    const std::string words(status_words(control.panel2.get()));
    const std::string text = (subject.empty() ? "" : subject + ": ") + words;
    status_->set_text(qt::from_code_page(subject), qt::from_code_page(words));
    status_->setToolTip(tip_text(text));
    status_->setAccessibleDescription(qt::from_code_page(text));
  };
  follow(control.panel2, this, show_status);
  follow(control.subject, this, show_status);
  const auto show = [this, &control](const std::string&) { show_state(control); };
  redraw_light_ = [this, &control] { show_state(control); };
  follow(control.panel3, this, show);
  follow(control.panel3_tip, this, show);
}

// A factor of the desktop's size, also after that has changed.
void StatusBarView::resize_words() {
  const QFont small = scaled_font(0.86);
  for (QLabel* label : {clock_, static_cast<QLabel*>(status_), static_cast<QLabel*>(state_)})
    label->setFont(small);
  clock_->setMinimumWidth(clock_->fontMetrics().horizontalAdvance("00:00:00") + 20);
  fit_state();
}

bool StatusBarView::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange) resize_words();
  return QStatusBar::event(event);
}

void StatusBarView::changeEvent(QEvent* event) {
  QStatusBar::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && redraw_light_) redraw_light_();
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
  const int letter = std::max(kUsualLetter, QFontInfo(font()).pixelSize());
  bell_->set_short(width() * kUsualLetter < kNarrow * letter);
  state_->setMinimumWidth(0);  // a label's hint is never below it
  state_->setMinimumWidth(std::min(state_->sizeHint().width(), width() / 2));
  state_->setMaximumWidth(state_->minimumWidth());
}

void StatusBarView::show_state(const StatusBar& control) {
  const QString state = qt::from_code_page(control.panel3.get());
  state_->setText(state);
  fit_state();
  light_->setVisible(!state.isEmpty());
  const Look& look = look_of(palette());
  const bool looking = state.contains("looking") && !state.contains("unplugged");
  const QColor colour = state == "STATUS: Ready" ? look.ok : looking ? look.link : look.failed;
  light_->setPixmap(light(colour, devicePixelRatioF()));
  const std::string& more = control.panel3_tip;
  const std::string tip = control.panel3.get() + (more.empty() ? "" : "\n" + more);
  for (QLabel* label : {light_, static_cast<QLabel*>(state_)}) {
    label->setToolTip(tip_text(tip));
    label->setAccessibleDescription(qt::from_code_page(more));
  }
}

}  // namespace homewarden::view
