#include "ui/qt/device_card.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalBlocker>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden {
namespace {

constexpr int kPictureSize = 80;
constexpr int kFocusFrame = 5;
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

DeviceButton::DeviceButton(QWidget* parent) : QAbstractButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void DeviceButton::set_picture(const QString& file) {
  picture_ = QPixmap(file);
  update();
}

QSize DeviceButton::sizeHint() const {
  return QSize(kPictureSize + 2 * kFocusFrame, kPictureSize + 2 * kFocusFrame);
}

void DeviceButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  if (picture_.isNull()) return;
  const int shrink = isDown() ? 2 : 0;
  const QRect place = QRect(kFocusFrame, kFocusFrame, kPictureSize, kPictureSize)
                          .adjusted(shrink, shrink, -shrink, -shrink);
  const QSize pixels = place.size() * devicePixelRatioF();
  painter.drawPixmap(place, picture_.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCorner + 3, kCorner + 3);
}

void DeviceButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

DeviceCard::DeviceCard(Picture& picture, Label& name, Slider& slider, QWidget* parent)
    : QWidget(parent),
      picture_(picture),
      name_(name),
      slider_(slider),
      button_(new DeviceButton(this)),
      caption_(new QLabel(this)),
      bar_(new QSlider(Qt::Vertical, this)),
      level_(new QLabel(this)) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(16, 16, 14, 12);
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(6);
  grid->addWidget(button_, 0, 0, Qt::AlignHCenter | Qt::AlignTop);
  grid->addWidget(bar_, 0, 1, Qt::AlignHCenter);
  grid->addWidget(caption_, 1, 0);
  grid->addWidget(level_, 1, 1, Qt::AlignHCenter | Qt::AlignTop);
  grid->setColumnStretch(0, 1);
  caption_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  caption_->setWordWrap(true);
  caption_->setTextFormat(Qt::PlainText);
  caption_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  // The widest text, so that the card does not move while a slider does.
  level_->setMinimumWidth(fontMetrics().horizontalAdvance("100 %"));
  level_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  bind_picture();
  bind_name();
  bind_slider();
}

QSize DeviceCard::sizeHint() const {
  return QSize(std::max(kCardWidth, fontMetrics().horizontalAdvance('x') * 23),
               layout()->sizeHint().height());
}

void DeviceCard::bind_picture() {
  follow(picture_.visible, this, [this](bool visible) { setVisible(visible); });
  follow(picture_.file, this,
         [this](const std::string& file) { button_->set_picture(QString::fromStdString(file)); });
  follow(picture_.tool_tip, this, [this](const std::string& tip) {
    button_->setToolTip(from_code_page(tip));
    button_->setAccessibleDescription(from_code_page(tip));
  });
  connect(button_, &QAbstractButton::clicked, this, [this] { picture_.click(); });
}

void DeviceCard::bind_name() {
  follow(name_.caption, this, [this](const std::string& text) {
    const QString name = from_code_page(text);
    caption_->setText(name);
    button_->setAccessibleName(name);
    bar_->setAccessibleName(tr("Brightness of %1").arg(name));
  });
}

void DeviceCard::bind_slider() {
  bar_->setStyle(new JumpStyle(bar_));
  guard_wheel(bar_);
  bar_->setRange(slider_.minimum, slider_.maximum);
  bar_->setPageStep(10);
  bar_->setSingleStep(5);
  bar_->setMinimumHeight(kPictureSize + 2 * kFocusFrame);
  follow(slider_.visible, this, [this](bool visible) {
    bar_->setVisible(visible);
    level_->setVisible(visible);
  });
  follow(slider_.tool_tip, this, [this](const std::string& tip) {
    bar_->setToolTip(from_code_page(tip));
    bar_->setAccessibleDescription(from_code_page(tip));
  });
  follow(slider_.value, this, [this](int value) {
    const QSignalBlocker quiet(bar_);
    bar_->setValue(value);
    show_level(bar_->value());
  });
  settled_.setSingleShot(true);
  settled_.setInterval(kSettledMilliseconds);
  connect(&settled_, &QTimer::timeout, this, [this] { commit_slider(); });
  connect(bar_, &QSlider::valueChanged, this, [this](int value) {
    show_level(value);
    if (!bar_->isSliderDown()) settled_.start();
  });
  connect(bar_, &QSlider::sliderReleased, this, [this] { commit_slider(); });
}

// Dragging over many positions is one move, as are steps that follow each other quickly.
void DeviceCard::commit_slider() {
  settled_.stop();
  if (bar_->isSliderDown() || bar_->value() == slider_.value) return;
  slider_.value = bar_->value();
  slider_.moved();
}

void DeviceCard::show_level(int level) {
  level_->setText(tr("%1 %").arg(level));
}

void DeviceCard::mousePressEvent(QMouseEvent* event) {
  // The name switches the device as the picture does.
  if (event->button() == Qt::LeftButton && caption_->geometry().contains(event->pos()))
    name_.click();
  else
    QWidget::mousePressEvent(event);
}

void DeviceCard::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor edge = palette().color(QPalette::WindowText);
  edge.setAlpha(38);
  painter.setPen(edge);
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
}

}  // namespace homewarden
