#include "ui/qt/look.h"

namespace homewarden::view {
namespace {

constexpr QRgb kAmber = 0xffffb83d;
constexpr QRgb kInk = 0xff1d1300;

Look make_light() {
  Look look;
  look.ground = 0xffedf1f5;
  look.side = 0xfff8fafb;
  look.card = 0xffffffff;
  look.field = 0xffffffff;
  look.over = 0xfff3f8fd;
  look.press = 0xffe3edf7;
  look.line = 0xffd3dde6;
  look.edge = 0xff74859a;
  look.text = 0xff16212c;
  look.quiet = 0xff4c5c6c;
  look.selected = 0xffd6e7f8;
  look.primary = 0xff1f62a8;
  look.link = 0xff1a5ea8;
  look.focus = 0xff1668c0;
  look.amber = kAmber;
  look.ink = kInk;
  look.card_on = 0xfffff3d6;
  look.rim = 0xffe0a63f;
  look.line_on = 0xffb3720c;
  look.quiet_on = 0xff54472f;
  look.warm = 0xff7a4700;
  look.glow = 0xffffaa1e;
  look.ok = 0xff1b7a45;
  look.failed = 0xffb3261e;
  look.failed_ground = 0xfffdecea;
  look.message = 0xff1e2a37;
  look.message_text = 0xfff3f6f9;
  look.message_link = 0xff8ccaff;
  look.scrim = QColor(22, 33, 44, 115);
  return look;
}

Look make_dark() {
  Look look;
  look.dark = true;
  look.ground = 0xff101820;
  look.side = 0xff16212c;
  look.card = 0xff1e2a37;
  look.field = 0xff131d27;
  look.over = 0xff273647;
  look.press = 0xff2c3c4e;
  look.line = 0xff34465a;
  look.edge = 0xff7288a0;
  look.text = 0xfff3f6f9;
  look.quiet = 0xffb3c1cf;
  look.selected = 0xff24405f;
  look.primary = 0xff2b6cb0;
  look.link = 0xff8ccaff;
  look.focus = 0xff7cc4ff;
  look.amber = kAmber;
  look.ink = kInk;
  look.card_on = 0xff33291a;
  look.rim = 0xffd99a2b;
  look.line_on = 0xffd99a2b;
  look.quiet_on = 0xffefe3cd;
  look.warm = 0xffffc766;
  look.glow = 0xffffb83d;
  look.ok = 0xff5fd38d;
  look.failed = 0xffff9d8f;
  look.failed_ground = 0xff3a2226;
  look.message = 0xfff3f6f9;
  look.message_text = 0xff16212c;
  look.message_link = 0xff1a5ea8;
  look.scrim = QColor(6, 10, 14, 158);
  return look;
}

std::optional<Look>& the_look() {
  static std::optional<Look> look;
  return look;
}

}  // namespace

const Look& light_look() {
  static const Look kLook = make_light();
  return kLook;
}

const Look& dark_look() {
  static const Look kLook = make_dark();
  return kLook;
}

void use_for_everything(const std::optional<Look>& look) {
  the_look() = look;
}

const Look& look_of(const QPalette& palette) {
  if (the_look()) return *the_look();
  const bool dark = palette.color(QPalette::Active, QPalette::Window).lightness() <
                    palette.color(QPalette::Active, QPalette::WindowText).lightness();
  return dark ? dark_look() : light_look();
}

QPalette palette_of(const Look& look) {
  QPalette palette(look.text, look.card, look.card, look.edge, look.line, look.text, look.text,
                   look.field, look.ground);
  palette.setColor(QPalette::AlternateBase, look.card);
  palette.setColor(QPalette::PlaceholderText, look.quiet);
  palette.setColor(QPalette::Highlight, look.selected);
  palette.setColor(QPalette::HighlightedText, look.text);
  palette.setColor(QPalette::Link, look.link);
  palette.setColor(QPalette::LinkVisited, look.link);
  palette.setColor(QPalette::ToolTipBase, look.message);
  palette.setColor(QPalette::ToolTipText, look.message_text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, look.quiet);
  return palette;
}

QColor mixed(const QColor& colour, const QColor& other, int percent) {
  const auto mix = [percent](int a, int b) { return (a * percent + b * (100 - percent)) / 100; };
  return QColor(mix(colour.red(), other.red()), mix(colour.green(), other.green()),
                mix(colour.blue(), other.blue()));
}

}  // namespace homewarden::view
