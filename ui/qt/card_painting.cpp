// How a device's card is drawn.

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "ui/qt/card_layout.h"
#include "ui/qt/device_card.h"
#include "ui/qt/device_pictures.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr double kGlowReach = 152;  // at a picture of 112
constexpr double kGlowPicture = 112;
constexpr double kUnplugged = 0.45;

QColor faded(QColor colour, double opacity) {
  colour.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
  return colour;
}

QColor between(const QColor& from, const QColor& to, double part) {
  return mixed(to, from, static_cast<int>(part * 100));
}

// "A 12", as it stands on the wheels of the module.
QString spaced(const std::string& address) {
  QString words = QString::fromStdString(address);
  if (words.size() > 1) words.insert(1, ' ');
  return words;
}

struct Pill {
  QColor fill = Qt::transparent;
  QColor border;
  QColor words;
  Qt::PenStyle pen = Qt::SolidLine;
  LineIcon icon = LineIcon::kCheck;
  bool has_icon = false;
};

}  // namespace

void DeviceCard::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  draw_surface(painter);
  draw_picture(painter);
  draw_words(painter);
  draw_pill(painter);
  if (!hasFocus() || !shows_focus_) return;
  draw_box(painter, rect(), kCardCorner + kRing, Qt::transparent, look_of(palette()).focus, 2);
}

void DeviceCard::draw_surface(QPainter& painter) const {
  const Look& look = look_of(palette());
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const double on = lit();
  const bool over = underMouse() && isEnabled();
  const QColor off_ground = isDown() ? look.press : over ? look.over : look.card;
  const QColor on_ground = isDown() ? mixed(look.card_on, look.amber, 82) : look.card_on;
  const QColor off_border = over || isDown() ? look.edge : look.line;
  const QColor border = is_not_sent() ? look.failed : between(off_border, look.rim, on);
  const double width = is_not_sent() || on > 0.5 ? 1.5 : 1;
  draw_box(painter, places.card, kCardCorner, between(off_ground, on_ground, on), Qt::transparent);
  if (on > 0 && !look.high_contrast) {
    const double level = std::max(glow(), 0.1);
    const double reach = kGlowReach * places.picture.width() / kGlowPicture;
    QRadialGradient glow_colours(places.picture.center(), reach);
    glow_colours.setColorAt(0.3, faded(look.glow, on * (0.06 + 0.40 * level)));
    glow_colours.setColorAt(0.62, faded(look.glow, on * (0.02 + 0.14 * level)));
    glow_colours.setColorAt(1, faded(look.glow, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow_colours);
    painter.drawRoundedRect(places.card, kCardCorner, kCardCorner);
  }
  draw_box(painter, places.card, kCardCorner, Qt::transparent, border, width);
}

void DeviceCard::draw_picture(QPainter& painter) const {
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const int side = static_cast<int>(places.picture.width());
  const std::string& file = picture_.file;
  const QString name = QString::fromStdString(file);
  const auto draw = [&](const std::string& source, double opacity) {
    if (opacity <= 0) return;
    painter.setOpacity(is_up() ? opacity : kUnplugged * opacity);
    painter.drawPixmap(places.picture.topLeft(), device_picture(source, side, devicePixelRatioF()));
    painter.setOpacity(1);
  };
  const double on = lit();
  const double bright = 0.7 + 0.3 * glow();
  const bool moving = on > 0 && on < 1;
  if (!moving) return draw(file, face_.get().on ? bright : 1);
  // Both pictures of a device lie side by side and differ in the ending alone.
  std::string other = file;
  const bool is_on = name.endsWith("on.gif");
  if (is_on)
    other.replace(other.size() - 6, 6, "off.gif");
  else if (name.endsWith("off.gif"))
    other.replace(other.size() - 7, 7, "on.gif");
  draw(is_on ? other : file, 1);
  draw(is_on ? file : other, on * bright);
}

void DeviceCard::draw_words(QPainter& painter) const {
  const Look& look = look_of(palette());
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const QColor quiet = face_.get().on ? look.quiet_on : look.quiet;
  painter.setPen(is_up() ? look.text : quiet);
  painter.setFont(name_font());
  painter.drawText(places.name, Qt::AlignCenter,
                   painter.fontMetrics().elidedText(shown_name_, Qt::ElideRight,
                                                    static_cast<int>(places.name.width())));
  const bool shows_address = underMouse() || (hasFocus() && shows_focus_);
  if (!shows_address) return;
  painter.setPen(quiet);
  painter.setFont(scaled_font(font(), 0.86, false));
  painter.drawText(places.top, Qt::AlignLeft | Qt::AlignVCenter, spaced(face_.get().address));
}

void DeviceCard::draw_pill(QPainter& painter) const {
  const Look& look = look_of(palette());
  const CardLayout places(QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing), fontMetrics());
  const bool moved = bar_->isSliderDown() || settled_.isActive();
  const CardState state = face_.get().state;
  Pill pill{Qt::transparent, look.edge, look.quiet};
  if (moved) {
    pill.border = look.line_on;
    pill.words = face_.get().on ? look.warm : look.text;
  } else if (state == CardState::kWaiting) {
    pill.words = face_.get().on ? look.quiet_on : look.quiet;
    pill.pen = Qt::DashLine;
    pill.icon = LineIcon::kClock;
    pill.has_icon = true;
  } else if (state == CardState::kSending) {
    pill.border = pill.words = look.link;
    pill.fill = face_.get().on ? look.card : QColor(Qt::transparent);
    pill.icon = LineIcon::kRetry;
    pill.has_icon = true;
  } else if (is_not_sent()) {
    pill.border = pill.words = look.failed;
    pill.fill = look.failed_ground;
    pill.icon = LineIcon::kWarning;
    pill.has_icon = true;
  } else if (!is_up()) {
    pill.border = face_.get().on ? look.rim : look.line;
    pill.words = face_.get().on ? look.quiet_on : look.quiet;
  } else if (face_.get().on) {
    pill.fill = look.amber;
    pill.border = look.line_on;
    pill.words = look.ink;
  }
  painter.setFont(scaled_font(font(), 0.93, true));
  const double icon = pill.has_icon ? 16 + 6 : 0;
  const double height = places.pill.height();
  const double room = places.pill.width() - icon - height;
  const QString shown =
      painter.fontMetrics().elidedText(words(), Qt::ElideRight, static_cast<int>(room));
  const double width = painter.fontMetrics().horizontalAdvance(shown) + icon + height;
  const QRectF place(places.pill.center().x() - width / 2, places.pill.top(), width, height);
  draw_box(painter, place, height / 2, pill.fill, pill.border, 1.5, pill.pen);
  if (pill.has_icon)
    draw_icon(painter, pill.icon, QRectF(place.left() + height / 2, place.center().y() - 8, 16, 16),
              pill.words);
  painter.setPen(pill.words);
  painter.drawText(place.adjusted(height / 2 + icon, 0, -height / 2 + 1, 0),
                   Qt::AlignLeft | Qt::AlignVCenter, shown);
}

}  // namespace homewarden::view
