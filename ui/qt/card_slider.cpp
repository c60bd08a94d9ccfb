// How the slider of a device's card is moved, and where it stands.

#include <QApplication>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/device_card.h"
#include "ui/qt/page.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden::view {
namespace {

constexpr int kSettledMilliseconds = 350;
// Between the left end of the slider, which is "Off", and its least level.
constexpr int kOffGap = 10;

}  // namespace

void DeviceCard::bind_slider() {
  guard_wheel(bar_);
  bar_->setRange(slider_.minimum - kOffGap, slider_.maximum);
  bar_->setFocusPolicy(Qt::ClickFocus);  // + and - on the card move it
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
  connect(bar_, &QSlider::valueChanged, this, [this](int position) {
    keep_from_gap(position);
    update();
    if (!bar_->isSliderDown()) settled_.start();
  });
  connect(bar_, &QSlider::sliderReleased, this, [this] { commit_slider(); });
}

void DeviceCard::show_value() {
  settled_.stop();
  place_bar();
  update();
}

// Where the device is to be, or is. What is off stands at the left end.
void DeviceCard::place_bar() {
  const CardFace& face = face_;
  int position = std::clamp(slider_.value.get(), slider_.minimum, slider_.maximum);
  if (face.wished && !face.wishes_level)
    position = *face.wished == 0 ? bar_->minimum() : slider_.maximum;
  else if (!face.wished && !face.on && position == slider_.minimum)
    position = bar_->minimum();
  const QSignalBlocker quiet(bar_);
  bar_->setValue(position);
  shown_ = at_ = bar_->value();
}

int DeviceCard::level_of(int position) const {
  return position < slider_.minimum ? 0 : position;
}

// There is nothing between off and the least level: a drag goes to what is nearer, a step on to the
// other side.
void DeviceCard::keep_from_gap(int position) {
  const int off = bar_->minimum();
  if (position > off && position < slider_.minimum) {
    const bool to_off = bar_->isSliderDown() ? position < off + kOffGap / 2 : at_ >= position;
    position = to_off ? off : slider_.minimum;
    const QSignalBlocker quiet(bar_);
    bar_->setValue(position);
  }
  at_ = position;
}

// Dragging over many positions is one move, as are steps that follow each other quickly.
void DeviceCard::commit_slider() {
  settled_.stop();
  if (bar_->isSliderDown()) return;
  const int position = bar_->value();
  if (position == shown_) return show_value();
  shown_ = position;
  if (level_of(position) == 0) return panel_.slid_off[slot_]();
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

}  // namespace homewarden::view
