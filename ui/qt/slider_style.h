#pragma once

class QPainter;
class QSlider;
class QStyleOptionSlider;
class QWidget;

namespace homewarden::view {

inline constexpr int kSliderHandle = 20;  // its side

// What a slider's level is: recorded, still to come about, or recorded and perhaps no longer so.
enum class SliderTone { kOff, kOn, kWaiting, kSending, kUncertain };

void set_tone(QSlider* slider, SliderTone tone);

// A horizontal one.
void draw_slider(const QStyleOptionSlider& option, QPainter* painter, const QWidget* widget);

}  // namespace homewarden::view
