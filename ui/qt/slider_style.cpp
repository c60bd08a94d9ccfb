#include "ui/qt/slider_style.h"

#include <QPainter>
#include <QSlider>
#include <QStyleOption>
#include <algorithm>

#include "ui/qt/look.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr const char* kTone = "homewarden_tone";
constexpr double kUncertain = 0.45;

}  // namespace

void set_tone(QSlider* slider, SliderTone tone) {
  slider->setProperty(kTone, static_cast<int>(tone));
  slider->update();
}

void draw_slider(const QStyleOptionSlider& option, QPainter* painter, const QWidget* widget) {
  const Look& look = look_of(option.palette);
  const auto tone = static_cast<SliderTone>(widget ? widget->property(kTone).toInt() : 0);
  const QRectF whole = option.rect;
  const double travel = whole.width() - kSliderHandle - 4;
  const int range = std::max(1, option.maximum - option.minimum);
  const double part = static_cast<double>(option.sliderPosition - option.minimum) / range;
  const QPointF centre(whole.left() + 2 + kSliderHandle / 2.0 + travel * part, whole.center().y());
  const QRectF track(whole.left() + 4, whole.center().y() - 3, whole.width() - 8, 6);
  const bool waiting = tone == SliderTone::kWaiting;
  const bool to_come = waiting || tone == SliderTone::kSending;
  painter->save();
  if (tone == SliderTone::kUncertain) painter->setOpacity(kUncertain);
  if (look.high_contrast)
    draw_box(*painter, track, 3, look.card, look.edge);
  else
    draw_box(*painter, track, 3, look.line, Qt::transparent);
  if (waiting) painter->setOpacity(0.6);
  QRectF filled = track;
  filled.setRight(centre.x());
  const bool pressed =
      (option.state & QStyle::State_Sunken) != 0 && (option.state & QStyle::State_Enabled) != 0;
  const bool off = tone == SliderTone::kOff && !pressed;
  if (!off && part > 0)
    draw_box(*painter, filled, 3, to_come ? look.link : look.amber,
             to_come ? QColor(Qt::transparent) : look.line_on);
  const QRectF handle(centre.x() - kSliderHandle / 2.0, centre.y() - kSliderHandle / 2.0,
                      kSliderHandle, kSliderHandle);
  draw_box(*painter, handle, kSliderHandle / 2.0, pressed ? look.press : QColor(Qt::white),
           to_come || off ? look.edge : look.line_on, 1.5);
  painter->restore();
  if ((option.state & QStyle::State_HasFocus) != 0)
    draw_box(*painter, handle.adjusted(-4, -4, 4, 4), kSliderHandle / 2.0 + 4, Qt::transparent,
             look.focus, 2);
}

}  // namespace homewarden::view
