#include "ui/qt/device_card.h"

#include <QApplication>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalBlocker>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden::view {
namespace {

constexpr int kCardWidth = 176;
constexpr double kCorner = 12;
constexpr int kSettledMilliseconds = 350;

// A click beside the handle brings it there, as people expect of a dimmer.
class JumpStyle : public QProxyStyle {
 public:
  explicit JumpStyle(QObject* owner) { setParent(owner); }
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    if (hint == SH_Slider_AbsoluteSetButtons) return Qt::LeftButton;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }
};

}  // namespace

DeviceCard::DeviceCard(HousePanel& panel, std::size_t slot, QWidget* parent)
    : QWidget(parent),
      picture_(panel.device[slot]),
      name_(panel.devicename[slot]),
      slider_(panel.image1[slot]),
      button_(new DeviceButton(this)),
      caption_(new QLabel(this)),
      bar_(new QSlider(Qt::Vertical, this)),
      level_(new QLabel(this)),
      foot_(new CardFoot(panel.cardstate[slot], panel.lab_notsent[slot], this)) {
  foot_->set_neighbour(button_);
  lay_out();
  bind_picture();
  bind_name(panel.lab_room);
  bind_slider();
  follow(panel.cardstate[slot], this, [this](CardState) { show_state(); });
  watch(panel.lab_notsent[slot].visible.changed, this, [this] { show_state(); });
}

void DeviceCard::lay_out() {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(16, 16, 14, 8);
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(6);
  grid->addWidget(button_, 0, 0, Qt::AlignHCenter | Qt::AlignTop);
  grid->addWidget(bar_, 0, 1, Qt::AlignHCenter);
  grid->addWidget(caption_, 1, 0);
  grid->addWidget(level_, 1, 1, Qt::AlignHCenter | Qt::AlignTop);
  grid->addWidget(foot_, 2, 0, 1, 2);
  grid->setColumnStretch(0, 1);
  caption_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  caption_->setWordWrap(true);
  caption_->setTextFormat(Qt::PlainText);
  caption_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  // The widest text, so that the card does not move while a slider does.
  level_->setMinimumWidth(fontMetrics().horizontalAdvance("100 %"));
  level_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
}

QSize DeviceCard::sizeHint() const {
  const int width = std::max(kCardWidth, fontMetrics().horizontalAdvance('x') * 23);
  // A long name takes more lines.
  return QSize(width,
               std::max(layout()->sizeHint().height(), layout()->totalHeightForWidth(width)));
}

void DeviceCard::bind_picture() {
  follow(picture_.visible, this, [this](bool visible) {
    drop_input();
    setVisible(visible);
  });
  follow(picture_.file, this,
         [this](const std::string& file) { button_->set_picture(QString::fromStdString(file)); });
  follow(picture_.tool_tip, this, [this](const std::string& tip) {
    button_->setToolTip(tip_text(tip));
    show_state();
  });
  connect(button_, &QAbstractButton::clicked, this, [this] { picture_.click(); });
}

void DeviceCard::bind_name(Label& room) {
  follow(name_.caption, this, [this](const std::string& text) {
    drop_input();
    const QString name = qt::from_code_page(text);
    caption_->setText(name);
    button_->setAccessibleName(name);
    bar_->setAccessibleName(tr("Brightness of %1").arg(name));
  });
  // Another room may have a device of the same name in this slot.
  watch(room.caption.changed, this, [this] { drop_input(); });
}

void DeviceCard::bind_slider() {
  bar_->setStyle(new JumpStyle(bar_));
  guard_wheel(bar_);
  bar_->setRange(slider_.minimum, slider_.maximum);
  bar_->setPageStep(10);
  bar_->setSingleStep(5);
  bar_->setMinimumHeight(DeviceButton::kSide);
  follow(slider_.visible, this, [this](bool visible) {
    bar_->setVisible(visible);
    level_->setVisible(visible);
  });
  follow(slider_.tool_tip, this, [this](const std::string& tip) {
    bar_->setToolTip(tip_text(tip));
    show_state();
  });
  follow(slider_.value, this, [this](int) { show_value(); });
  watch(slider_.put_back, this, [this] { drop_input(); });
  settled_.setSingleShot(true);
  settled_.setInterval(kSettledMilliseconds);
  connect(&settled_, &QTimer::timeout, this, [this] { commit_slider(); });
  connect(bar_, &QSlider::valueChanged, this, [this](int value) {
    show_level(value);
    if (!bar_->isSliderDown()) settled_.start();
  });
  connect(bar_, &QSlider::sliderReleased, this, [this] { commit_slider(); });
}

// A screen reader says it with the picture and with the slider.
void DeviceCard::show_state() {
  button_->set_dimmed(foot_->state() == CardState::kWaiting);
  const QString words = foot_->words();
  const auto described = [&words](const std::string& tip) {
    const QString text = qt::from_code_page(tip);
    return words.isEmpty() ? text : words + " " + text;
  };
  button_->setAccessibleDescription(described(picture_.tool_tip));
  bar_->setAccessibleDescription(described(slider_.tool_tip));
  update();
}

// A level below the bar's range is told in the number.
void DeviceCard::show_value() {
  settled_.stop();
  const QSignalBlocker quiet(bar_);
  bar_->setValue(slider_.value);
  shown_ = bar_->value();
  show_level(slider_.value);
}

void DeviceCard::show_level(int level) {
  level_->setText(tr("%1 %").arg(level));
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
  button_->setDown(false);
  caption_pressed_ = false;
  if (bar_->isSliderDown()) {
    const QSignalBlocker quiet(bar_);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), bar_->mapToGlobal(QPointF()),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(bar_, &release);
    bar_->setSliderDown(false);
  }
  show_value();
}

// The name switches the device as the picture does.
void DeviceCard::mousePressEvent(QMouseEvent* event) {
  caption_pressed_ =
      event->button() == Qt::LeftButton && caption_->geometry().contains(event->pos());
  if (!caption_pressed_) QWidget::mousePressEvent(event);
}

void DeviceCard::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mouseReleaseEvent(event);
  const bool pressed = std::exchange(caption_pressed_, false);
  if (pressed && caption_->geometry().contains(event->pos())) name_.click();
}

void DeviceCard::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPen edge(palette().color(QPalette::WindowText), 1);
  if (foot_->state() != CardState::kIdle) {
    edge = QPen(palette().color(QPalette::Highlight), 2);
  } else if (foot_->warns()) {
    edge = QPen(CardFoot::warning_colour(palette()), 2);
  } else {
    QColor soft = edge.color();
    soft.setAlpha(38);
    edge.setColor(soft);
  }
  painter.setPen(edge);
  painter.setBrush(palette().color(QPalette::Base));
  const double inset = edge.widthF() / 2;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kCorner, kCorner);
}

}  // namespace homewarden::view
