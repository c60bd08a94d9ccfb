#include "ui/qt/high_contrast.h"

#include <algorithm>
#include <cmath>

namespace homewarden::view {
namespace {

constexpr double kEnough = 12;  // so that 7 is left on what is under the pointer or held down
constexpr double kForWords = 7;

// As the guidelines for accessible contents define it.
double luminance(const QColor& colour) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
         0.0722 * part(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const double first = luminance(one) + 0.05;
  const double second = luminance(other) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

void take_grounds(Look& look, const QColor& ground, const QColor& inner) {
  look.ground = look.side = ground;
  look.card = look.field = look.card_on = look.failed_ground = inner;
  look.over = mixed(look.text, inner, 8);
  look.press = mixed(look.text, inner, 12);
  look.selected = mixed(look.text, ground, 20);
}

}  // namespace

Look high_contrast_look(const QPalette& palette, std::optional<bool> dark) {
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  const QColor base = palette.color(QPalette::Active, QPalette::Base);
  const QColor words = palette.color(QPalette::Active, QPalette::WindowText);
  const bool is_dark = window.lightness() < words.lightness();
  Look look = dark.value_or(is_dark) ? dark_look() : light_look();
  if (contrast(words, window) >= kEnough && look.dark == is_dark) {
    look.text = words;
    take_grounds(look, window, contrast(words, base) >= kEnough ? base : window);
  } else {
    look.text = look.dark ? Qt::white : Qt::black;
    const QColor ground = look.dark ? Qt::black : Qt::white;
    take_grounds(look, ground, ground);
  }
  for (QColor* full : {&look.line, &look.edge, &look.quiet, &look.rim, &look.line_on,
                       &look.quiet_on, &look.warm, &look.message})
    *full = look.text;
  look.message_text = look.message_link = look.ground;
  look.high_contrast = true;
  const QColor link = palette.color(QPalette::Active, QPalette::Link);
  const bool fits = std::min(contrast(link, look.press), contrast(link, look.ground)) >= kForWords;
  look.link = fits ? link : QColor(look.dark ? 0xffb8dcff : 0xff003a85);
  look.focus = look.link;
  if (!look.dark) look.primary = 0xff003a85;
  look.ok = look.dark ? 0xff8df0b4 : 0xff00451f;
  look.failed = look.dark ? 0xffffc4bb : 0xff800b05;
  return look;
}

}  // namespace homewarden::view
