#include "ui/qt/device_card.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/card_layout.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/motion.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden::view {
namespace {

constexpr int kSettledMilliseconds = 350;
constexpr int kFullyOn = 100;

}  // namespace

DeviceCard::DeviceCard(HousePanel& panel, std::size_t slot, QWidget* parent)
    : QAbstractButton(parent),
      picture_(panel.device[slot]),
      name_(panel.devicename[slot]),
      slider_(panel.image1[slot]),
      not_sent_(panel.lab_notsent[slot]),
      face_(panel.cardface[slot]),
      bar_(new QSlider(Qt::Horizontal, this)),
      retry_(new QPushButton(tr("Retry"), this)) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCheckable(false);
  turning_.setStartValue(0.0);
  turning_.setEndValue(0.0);
  connect(&turning_, &QVariantAnimation::valueChanged, this, [this] { update(); });
  bind_picture();
  bind_name(panel.lab_room);
  bind_slider();
  bind_retry();
  follow(face_, this, [this](const CardFace&) { show_face(); });
}

QSize DeviceCard::sizeHint() const {
  return CardLayout::wanted(fontMetrics()).grownBy({kRing, kRing, kRing, kRing});
}

QSize DeviceCard::minimumSizeHint() const {
  return CardLayout::least(fontMetrics()).grownBy({kRing, kRing, kRing, kRing});
}

void DeviceCard::bind_picture() {
  follow(picture_.visible, this, [this](bool visible) {
    drop_input();
    new_device_ = true;
    setVisible(visible);
  });
  watch(picture_.file.changed, this, [this] { update(); });
  follow(picture_.tool_tip, this, [this](const std::string& tip) {
    setToolTip(tip_text(tip));
    describe();
  });
  connect(this, &QAbstractButton::clicked, this, [this] { picture_.click(); });
}

void DeviceCard::bind_name(Label& room) {
  follow(name_.caption, this, [this](const std::string& text) {
    drop_input();
    new_device_ = true;
    shown_name_ = qt::from_code_page(text);
    setAccessibleName(shown_name_);
    bar_->setAccessibleName(tr("Brightness of %1").arg(shown_name_));
    retry_->setAccessibleName(tr("Send to %1 again").arg(shown_name_));
    update();
  });
  // Another room may have a device of the same name in this slot.
  watch(room.caption.changed, this, [this] {
    drop_input();
    new_device_ = true;
  });
}

void DeviceCard::bind_slider() {
  guard_wheel(bar_);
  bar_->setRange(slider_.minimum, slider_.maximum);
  bar_->setPageStep(10);
  bar_->setSingleStep(5);
  follow(slider_.visible, this, [this](bool) { lay_out(); });
  follow(slider_.tool_tip, this, [this](const std::string& tip) {
    bar_->setToolTip(tip_text(tip));
    bar_->setAccessibleDescription(qt::from_code_page(tip));
  });
  follow(slider_.value, this, [this](int) { show_value(); });
  watch(slider_.put_back, this, [this] { drop_input(); });
  settled_.setSingleShot(true);
  settled_.setInterval(kSettledMilliseconds);
  connect(&settled_, &QTimer::timeout, this, [this] { commit_slider(); });
  connect(bar_, &QSlider::valueChanged, this, [this] {
    update();
    if (!bar_->isSliderDown()) settled_.start();
  });
  connect(bar_, &QSlider::sliderReleased, this, [this] { commit_slider(); });
}

void DeviceCard::bind_retry() {
  set_kind(retry_, ButtonKind::kDanger);
  retry_->setIcon(make_icon(LineIcon::kRetry));
  retry_->setCursor(Qt::PointingHandCursor);
  follow(not_sent_.tool_tip, this,
         [this](const std::string& tip) { retry_->setToolTip(tip_text(tip)); });
  watch(not_sent_.visible.changed, this, [this] { show_face(); });
  connect(retry_, &QPushButton::clicked, this, [this] { not_sent_.click(); });
}

bool DeviceCard::is_not_sent() const {
  return face_.get().state == CardState::kIdle && not_sent_.visible;
}

QString DeviceCard::words() const {
  const CardFace& face = face_;
  if (bar_->isSliderDown() || settled_.isActive()) return tr("%1 %").arg(bar_->value());
  const QString wished = !face.wished        ? QString()
                         : *face.wished == 0 ? tr("off")
                         : face.wishes_level ? tr("%1 %").arg(*face.wished)
                                             : tr("on");
  switch (face.state) {
    case CardState::kWaiting:
      return wished.isEmpty() ? tr("Waiting") : tr("Waiting: %1").arg(wished);
    case CardState::kSending:
      if (wished.isEmpty()) return tr("Sending");
      return (face.wishes_level ? tr("Setting %1") : tr("Turning %1")).arg(wished);
    case CardState::kIdle:
      break;
  }
  if (is_not_sent()) return tr("Not sent");
  if (!face.on) return tr("Off");
  return face.dimmable && face.level < kFullyOn ? tr("%1 %").arg(face.level) : tr("On");
}

void DeviceCard::show_face() {
  move_to(face_.get().on, std::exchange(new_device_, false));
  const CardState state = face_.get().state;
  set_tone(bar_, state == CardState::kSending   ? SliderTone::kSending
                 : state == CardState::kWaiting ? SliderTone::kWaiting
                 : face_.get().on               ? SliderTone::kOn
                                                : SliderTone::kOff);
  lay_out();
  describe();
  update();
}

// A screen reader hears the state with the name.
void DeviceCard::describe() {
  setAccessibleDescription(words() + ". " + qt::from_code_page(picture_.tool_tip.get()));
}

void DeviceCard::move_to(bool on, bool at_once) {
  const double target = on ? 1.0 : 0.0;
  if (turning_.endValue().toDouble() == target && !at_once) return;
  const double now = lit();
  turning_.stop();
  turning_.setStartValue(at_once ? target : now);
  turning_.setEndValue(target);
  set_motion(turning_, at_once ? 0 : motion_milliseconds(*this));
  turning_.start();
}

double DeviceCard::lit() const {
  return turning_.currentValue().isValid() ? turning_.currentValue().toDouble() : 0.0;
}

void DeviceCard::lay_out() {
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const bool retries = is_not_sent();
  if (!retries && retry_->hasFocus()) setFocus();
  bar_->setGeometry(places.low.toRect());
  bar_->setVisible(slider_.visible && !retries);
  const QSize size = retry_->sizeHint().boundedTo(places.low.size().toSize());
  retry_->setGeometry(
      QRect(places.low.center().toPoint() - QPoint(size.width(), 32) / 2, QSize(size.width(), 32)));
  retry_->setVisible(retries);
}

void DeviceCard::show_value() {
  settled_.stop();
  const QSignalBlocker quiet(bar_);
  bar_->setValue(slider_.value);
  shown_ = bar_->value();
  update();
}

// Dragging over many positions is one move, as are steps that follow each other quickly.
void DeviceCard::commit_slider() {
  settled_.stop();
  if (bar_->isSliderDown()) return;
  const int position = bar_->value();
  if (position == shown_) return show_value();
  shown_ = position;
  slider_.value = position;
  slider_.moved();
}

// What is held down is let go without effect, and the slider goes back.
void DeviceCard::drop_input() {
  setDown(false);
  if (bar_->isSliderDown()) {
    const QSignalBlocker quiet(bar_);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), bar_->mapToGlobal(QPointF()),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(bar_, &release);
    bar_->setSliderDown(false);
  }
  show_value();
}

void DeviceCard::resizeEvent(QResizeEvent* event) {
  QAbstractButton::resizeEvent(event);
  lay_out();
}

void DeviceCard::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::FontChange) lay_out();
}

// After a key, not after a press of the mouse.
void DeviceCard::focusInEvent(QFocusEvent* event) {
  shows_focus_ = event->reason() != Qt::MouseFocusReason;
  QAbstractButton::focusInEvent(event);
}

void DeviceCard::keyPressEvent(QKeyEvent* event) {
  shows_focus_ = true;
  update();
  if (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Minus) {
    if (bar_->isVisible())
      bar_->triggerAction(event->key() == Qt::Key_Plus ? QSlider::SliderPageStepAdd
                                                       : QSlider::SliderPageStepSub);
    return;
  }
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
    QAbstractButton::keyPressEvent(event);
  else if (!event->isAutoRepeat())  // a key held down switches once
    click();
}

void DeviceCard::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void DeviceCard::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

}  // namespace homewarden::view
