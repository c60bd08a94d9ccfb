#include "ui/qt/message_toast.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/motion.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kWidest = 640;
constexpr int kMargin = 16;
constexpr int kLeast = 48;
constexpr int kSign = 20;
constexpr int kGap = 12;
constexpr int kButton = 32;
constexpr int kRise = 8;

// "Undo", or a sign, in the colour of the links of a message.
class MessageButton : public QAbstractButton {
 public:
  MessageButton(const QString& name, std::optional<LineIcon> sign, MessageToast* toast)
      : QAbstractButton(toast), sign_(sign), toast_(*toast) {
    setText(name);
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
  }
  QSize sizeHint() const override {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    if (sign_) return {kButton, kButton};
    return {metrics.horizontalAdvance(text()) + 20, std::max(kButton, metrics.height() + 8)};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setOpacity(toast_.opacity());
    const Look& look = look_of(palette());
    if (hasFocus())
      draw_box(painter, rect(), kControlCorner, Qt::transparent, look.message_link, 2);
    if (sign_) {
      draw_icon(painter, *sign_, centred(rect(), kSign - 2),
                underMouse() ? look.message_link : look.message_text);
      return;
    }
    QFont bold = font();
    bold.setBold(true);
    bold.setUnderline(underMouse());
    painter.setFont(bold);
    painter.setPen(look.message_link);
    painter.drawText(rect(), Qt::AlignCenter, text());
  }

 private:
  std::optional<LineIcon> sign_;
  MessageToast& toast_;
};

// A screen reader says an alert at once, and a notification when it has finished its sentence.
class ToastAccess : public QAccessibleWidget {
 public:
  explicit ToastAccess(MessageToast* toast)
      : QAccessibleWidget(toast, QAccessible::Notification), toast_(*toast) {}
  QAccessible::Role role() const override {
    return toast_.failed() ? QAccessible::AlertMessage : QAccessible::Notification;
  }

 private:
  MessageToast& toast_;
};

QAccessibleInterface* make_access(const QString& /*class_name*/, QObject* object) {
  auto* toast = dynamic_cast<MessageToast*>(object);
  return toast ? new ToastAccess(toast) : nullptr;
}

void make_toasts_accessible() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(make_access);
    return true;
  }();
  static_cast<void>(kInstalled);
}

}  // namespace

MessageToast::MessageToast(MessagePanel& panel, QWidget* window, QWidget* page)
    : QWidget(window), panel_(panel), page_(page), shadow_(new DropShadow(window)) {
  make_toasts_accessible();
  undo_ = new MessageButton(tr("Undo"), std::nullopt, this);
  undo_->setToolTip(tr("Undo (Ctrl+Z)"));
  close_ = new MessageButton(tr("Close"), LineIcon::kClose, this);
  connect(undo_, &QAbstractButton::clicked, this,
          [this] { panel_.undo_asked(panel_.message.get().id); });
  connect(close_, &QAbstractButton::clicked, this, [this] { panel_.message_closed(); });
  set_motion(rising_, 0);
  rising_.setStartValue(0.0);
  rising_.setEndValue(1.0);
  connect(&rising_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
    opacity_ = value.toDouble();
    lay_out();
  });
  setAttribute(Qt::WA_Hover);
  hide();
  shadow_->hide();
  page->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
    if (isAncestorOf(now) && old && !isAncestorOf(old)) former_ = old;
    hold();
  });
  watch(panel.message.changed, this, [this] { show_message(); });
}

void MessageToast::show_message() {
  const MessageEntry& message = panel_.message;
  if (message.id == 0) {
    leave_focus();
    hide();
    shadow_->hide();
    panel_.message_held = false;
    return;
  }
  setAccessibleName(qt::from_code_page(message.text));
  undo_->setVisible(message.undoable);
  if (isVisible())
    lay_out();
  else
    appear();
  if (!message.failed) return;
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void MessageToast::appear() {
  shadow_->show();
  shadow_->raise();
  show();
  raise();
  set_motion(rising_, motion_milliseconds(*this));
  rising_.stop();
  if (rising_.duration() > 0) {
    rising_.start();
  } else {
    opacity_ = 1;
    lay_out();
  }
}

// Whoever undid or closed it with the keyboard goes on where they were.
void MessageToast::leave_focus() {
  if (!isAncestorOf(window()->focusWidget())) return;
  if (former_ && former_->isVisible())
    former_->setFocus(Qt::OtherFocusReason);
  else
    page_->setFocus(Qt::OtherFocusReason);
}

void MessageToast::lay_out() {
  const QRect page(page_->mapTo(parentWidget(), QPoint()), page_->size());
  const int most = std::min(kWidest, page.width() - 2 * kMargin);
  const QSize undo = undo_->sizeHint();
  const int left = kMargin + kSign + kGap;
  const int right = kGap + (panel_.message.get().undoable ? undo.width() + 4 : 0) + kButton + 8;
  const QRect words = fontMetrics().boundingRect(QRect(0, 0, most - left - right, page.height()),
                                                 Qt::TextWordWrap, accessibleName());
  const int width = std::min(most, words.width() + 2 + left + right);
  const int height = std::max({kLeast, words.height() + 24, undo.height() + 16});
  const int sunk = static_cast<int>((1 - opacity_) * kRise);
  const QRect place(page.left() + (page.width() - width) / 2,
                    page.bottom() + 1 - kMargin - height + sunk, width, height);
  setGeometry(place);
  words_ = QRect(left, 0, width - left - right, height);
  close_->setGeometry(width - kButton - 8, (height - kButton) / 2, kButton, kButton);
  undo_->setGeometry(close_->x() - 4 - undo.width(), (height - undo.height()) / 2, undo.width(),
                     undo.height());
  shadow_->put_around(place);
  shadow_->set_strength(opacity_);
  update();
}

void MessageToast::hold() {
  panel_.message_held = isVisible() && (underMouse() || isAncestorOf(window()->focusWidget()));
}

bool MessageToast::event(QEvent* event) {
  if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave) {
    const bool over = event->type() == QEvent::HoverEnter;
    panel_.message_held = isVisible() && (over || isAncestorOf(window()->focusWidget()));
  }
  if (event->type() == QEvent::FontChange && isVisible()) lay_out();
  return QWidget::event(event);
}

bool MessageToast::eventFilter(QObject* watched, QEvent* event) {
  const bool moved = event->type() == QEvent::Resize || event->type() == QEvent::Move;
  if (watched == page_ && moved && isVisible()) lay_out();
  return false;
}

void MessageToast::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    panel_.message_closed();
  else
    QWidget::keyPressEvent(event);
}

void MessageToast::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setOpacity(opacity_);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kBoxCorner, look.message, Qt::transparent);
  const MessageEntry& message = panel_.message;
  const LineIcon sign = message.failed     ? LineIcon::kWarning
                        : message.undoable ? LineIcon::kTrash
                                           : LineIcon::kCheck;
  // Its ground is as dark as the other look is.
  const QColor failed = (look.dark ? light_look() : dark_look()).failed;
  draw_icon(painter, sign, QRectF(kMargin, (height() - kSign) / 2.0, kSign, kSign),
            message.failed ? failed : look.message_text);
  painter.setPen(look.message_text);
  painter.drawText(words_, Qt::AlignVCenter | Qt::TextWordWrap, accessibleName());
}

}  // namespace homewarden::view
