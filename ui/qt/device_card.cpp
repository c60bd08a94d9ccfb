#include "ui/qt/device_card.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/card_access.h"
#include "ui/qt/card_layout.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/motion.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/slider_style.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kFullyOn = 100;
constexpr const char* kPercent = "%1\u00A0%";

}  // namespace

DeviceCard::DeviceCard(HousePanel& panel, std::size_t slot, QWidget* parent)
    : QAbstractButton(parent),
      panel_(panel),
      slot_(slot),
      picture_(panel.device[slot]),
      name_(panel.devicename[slot]),
      slider_(panel.image1[slot]),
      not_sent_(panel.lab_notsent[slot]),
      face_(panel.cardface[slot]),
      bar_(new QSlider(Qt::Horizontal, this)),
      retry_(new QPushButton(tr("Retry"), this)),
      menu_(new CardMenuButton(this)) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCheckable(false);
  turning_.setStartValue(QPointF());
  turning_.setEndValue(QPointF());
  connect(&turning_, &QVariantAnimation::valueChanged, this, [this] { update(); });
  bind_picture();
  bind_name();
  bind_slider();
  bind_retry();
  menu_->setAccessibleName(tr("Menu"));
  menu_->setToolTip(tr("Rename (F2), change, move or delete (Ctrl+D)"));
  connect(menu_, &QToolButton::clicked, this,
          [this] { show_menu(menu_->mapToGlobal(QPoint(0, menu_->height()))); });
  follow(face_, this, [this](const CardFace&) { show_face(); });
  watch(panel.line_is_up.changed, this, [this] { show_face(); });
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
  follow(picture_.tool_tip, this, [this](const std::string&) {
    show_tip();
    describe();
  });
  watch(picture_.focus_requested, this, [this] { setFocus(Qt::OtherFocusReason); });
  connect(this, &QAbstractButton::clicked, this, [this] { picture_.click(); });
}

void DeviceCard::bind_name() {
  const auto another_device = [this] {
    drop_input();
    new_device_ = true;
    show_name();
  };
  follow(name_.caption, this, [another_device](const std::string&) { another_device(); });
  // Another room may have a device of the same name in this slot.
  watch(panel_.lab_room.caption.changed, this, another_device);
}

void DeviceCard::show_name() {
  shown_name_ = qt::from_code_page(name_.caption.get());
  setAccessibleName(shown_name_.isEmpty()
                        ? QString()
                        : shown_name_ + ", " + qt::from_code_page(panel_.lab_room.caption.get()));
  bar_->setAccessibleName(tr("Brightness of %1").arg(shown_name_));
  retry_->setAccessibleName(tr("Send to %1 again").arg(shown_name_));
  menu_->setAccessibleDescription(shown_name_);
  show_tip();
  update();
}

// What a press does; above it the name when the card has no room for all of it.
void DeviceCard::show_tip() {
  QString tip = qt::from_code_page(picture_.tool_tip.get());
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const QFontMetrics metrics(name_font());
  if (metrics.horizontalAdvance(shown_name_) > places.name.width()) tip = shown_name_ + "\n" + tip;
  setToolTip(tip_text(tip));
}

QFont DeviceCard::name_font() const {
  return scaled_font(font(), 1.14, true);
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
  if (bar_->isSliderDown() || settled_.isActive()) {
    const int level = level_of(bar_->value());
    return level == 0 ? tr("Off") : tr(kPercent).arg(level);
  }
  const QString wished = !face.wished        ? QString()
                         : *face.wished == 0 ? tr("off")
                         : face.wishes_level ? tr(kPercent).arg(*face.wished)
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
  return face.dimmable && face.level < kFullyOn ? tr(kPercent).arg(face.level) : tr("On");
}

void DeviceCard::show_face() {
  move_to(face_.get().on, face_.get().level, std::exchange(new_device_, false));
  if (!bar_->isSliderDown() && !settled_.isActive()) place_bar();
  const CardState state = face_.get().state;
  set_tone(bar_, state == CardState::kSending   ? SliderTone::kSending
                 : state == CardState::kWaiting ? SliderTone::kWaiting
                 : !is_up()                     ? SliderTone::kUncertain
                 : face_.get().on               ? SliderTone::kOn
                                                : SliderTone::kOff);
  lay_out();
  describe();
  update();
}

// Whether it is on and how brightly a screen reader hears from the card itself (card_access.cpp).
void DeviceCard::describe() {
  QString state;
  if (is_not_sent() || face_.get().state != CardState::kIdle) state = words() + ". ";
  if (!is_up()) state += tr("The interface is not connected. ");
  const QString description = state + qt::from_code_page(picture_.tool_tip.get());
  const bool told = description == accessibleDescription();
  setAccessibleDescription(description);
  announce_card(*this, !told);
}

void DeviceCard::move_to(bool on, int level, bool at_once) {
  const QPointF target(on ? 1.0 : 0.0, on ? level / 100.0 : glow());
  if (turning_.endValue().toPointF() == target && !at_once) return;
  const QPointF now(lit(), lit() > 0 ? glow() : target.y());
  turning_.stop();
  turning_.setStartValue(at_once ? target : now);
  turning_.setEndValue(target);
  set_motion(turning_, at_once || !isVisible() ? 0 : motion_milliseconds(*this));
  turning_.start();
}

double DeviceCard::lit() const {
  return turning_.currentValue().toPointF().x();
}

double DeviceCard::glow() const {
  return turning_.currentValue().toPointF().y();
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
  show_tip();
  menu_->move(static_cast<int>(places.top.right()) - menu_->width() + 4,
              static_cast<int>(places.top.top()));
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
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
    shows_focus_ = event->reason() != Qt::MouseFocusReason;
  QAbstractButton::focusInEvent(event);
  show_corner();
}

void DeviceCard::focusOutEvent(QFocusEvent* event) {
  QAbstractButton::focusOutEvent(event);
  show_corner();
}

// A key held down switches once.
void DeviceCard::keyPressEvent(QKeyEvent* event) {
  shows_focus_ = true;
  show_corner();
  update();
  if (!takes(*event)) QAbstractButton::keyPressEvent(event);
}

bool DeviceCard::takes(const QKeyEvent& event) {
  const int slot = static_cast<int>(slot_);
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Minus:
      if (bar_->isVisible())
        bar_->triggerAction(event.key() == Qt::Key_Plus ? QSlider::SliderPageStepAdd
                                                        : QSlider::SliderPageStepSub);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event.isAutoRepeat()) click();
      return true;
    case Qt::Key_F2:
      panel_.card_order(slot, CardOrder::kRename);
      return true;
    case Qt::Key_D:
      if (event.modifiers() != Qt::ControlModifier) return false;
      panel_.card_order(slot, CardOrder::kRemove);
      return true;
    case Qt::Key_Delete:
      panel_.card_order(slot, CardOrder::kRemove);
      return true;
    default:
      return false;
  }
}

void DeviceCard::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  show_menu(by_key ? menu_->mapToGlobal(QPoint(0, menu_->height())) : event->globalPos());
}

void DeviceCard::show_menu(const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fill_card_menu(*menu, panel_, static_cast<int>(slot_));
  // Qt tells nobody that the pointer left the card while the menu was open.
  connect(menu, &QMenu::aboutToHide, this, [this] {
    if (!underMouse() || rect().contains(mapFromGlobal(QCursor::pos()))) return;
    QEvent left(QEvent::Leave);
    QCoreApplication::sendEvent(this, &left);
  });
  menu->popup(place);
}

void DeviceCard::show_corner() {
  menu_->set_shown(underMouse() || (hasFocus() && shows_focus_));
}

void DeviceCard::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  show_corner();
  update();
}

void DeviceCard::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  show_corner();
  update();
}

}  // namespace homewarden::view
