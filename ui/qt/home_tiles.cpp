#include "ui/qt/home_tiles.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/device_pictures.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/tip_text.h"

namespace homewarden::view {
namespace {

constexpr int kChipHeight = 64;
constexpr int kChipPicture = 44;
constexpr int kPadding = 12;
constexpr int kDot = 10;
constexpr int kDotStep = 15;
constexpr int kSign = 20;
constexpr int kFullyOn = 100;
constexpr double kSmall = 0.86;
constexpr double kNames = 1.14;

int line_of(double factor, bool bold) {
  return QFontMetrics(scaled_font(factor, bold)).height();
}

void words(QPainter& painter, const QRect& place, const QFont& font, const QColor& colour,
           const QString& text, int alignment = Qt::AlignLeft) {
  painter.setFont(font);
  painter.setPen(colour);
  painter.drawText(place, alignment | Qt::AlignVCenter,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

QString level_in_words(int level, bool dimmable) {
  if (level == 0) return tr("off");
  return dimmable && level < kFullyOn ? QString("%1\u00A0%").arg(level) : tr("on");
}

void prepare(QAbstractButton* button) {
  button->setCursor(Qt::PointingHandCursor);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAttribute(Qt::WA_Hover);
}

// The focus is where a key has brought it.
bool shows_focus(const QAbstractButton& button) {
  return button.hasFocus() && button.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

}  // namespace

ChipButton::ChipButton(QWidget* parent) : QAbstractButton(parent) {
  prepare(this);
  setCheckable(true);
}

void ChipButton::show_chip(const HomeChip& chip) {
  chip_ = chip;
  setChecked(chip.level > 0);
  const QString name = qt::from_code_page(chip.name);
  setAccessibleName(name + ", " + qt::from_code_page(chip.room));
  setAccessibleDescription(second_line());
  const QString does = chip.state == ChipState::kNotSent ? tr("Send to %1 again").arg(name)
                       : chip.level > 0                  ? tr("Turn %1 off").arg(name)
                                                         : tr("Turn %1 on").arg(name);
  setToolTip(tip_text(does + "\n" + qt::from_code_page(chip.room)));
  update();
}

QString ChipButton::second_line() const {
  const QString room = qt::from_code_page(chip_.room);
  const int wished = chip_.wished.value_or(chip_.level);
  switch (chip_.state) {
    case ChipState::kNotSent:
      return tr("Not sent. Press to retry");
    case ChipState::kWaiting:
      return tr("Waiting: %1").arg(level_in_words(wished, chip_.dimmable));
    case ChipState::kSending:
      if (!chip_.wished) return tr("Sending");  // a spoken command, or an event's
      return wished > 0 ? tr("Turning on") : tr("Turning off");
    case ChipState::kIdle:
      break;
  }
  if (chip_.level == kFullyOn || (chip_.level > 0 && !chip_.dimmable)) return room;
  return room + ", " + level_in_words(chip_.level, chip_.dimmable);
}

QSize ChipButton::sizeHint() const {
  const int lines = line_of(1, true) + line_of(kSmall, false) + 2 * kPadding;
  return {200, std::max(kChipHeight, lines)};
}

void ChipButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look& look = look_of(palette());
  const bool on = chip_.level > 0;
  const bool under_way = chip_.state == ChipState::kWaiting || chip_.state == ChipState::kSending;
  QColor ground = on ? look.card_on : look.card;
  if (isDown())
    ground = look.press;
  else if (underMouse())
    ground = on ? mixed(look.card_on, look.amber, 88) : look.over;
  const QColor border = chip_.state == ChipState::kNotSent ? look.failed
                        : under_way                        ? look.link
                        : on                               ? look.rim
                                                           : look.line;
  const Qt::PenStyle pen = chip_.state == ChipState::kWaiting ? Qt::DashLine : Qt::SolidLine;
  draw_box(painter, rect(), kBoxCorner, ground, Qt::transparent);
  if (on && !isDown() && !look.high_contrast) {
    QLinearGradient glow(0, 0, width() * 0.75, 0);
    QColor amber = look.amber;
    amber.setAlphaF(static_cast<float>(0.10 + 0.32 * chip_.level / kFullyOn));
    glow.setColorAt(0, amber);
    amber.setAlphaF(0);
    glow.setColorAt(1, amber);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawRoundedRect(rect(), kBoxCorner, kBoxCorner);
  }
  draw_box(painter, rect(), kBoxCorner, Qt::transparent, border, 1, pen);
  const QPixmap picture = device_picture(chip_.picture, kChipPicture, devicePixelRatioF());
  const int middle = height() / 2;
  painter.drawPixmap(kPadding, middle - kChipPicture / 2, picture);

  const int left = kPadding + kChipPicture + kPadding;
  const int right = width() - kPadding - kSign - 8;
  const int first = line_of(1, true);
  const int second = line_of(kSmall, false);
  const int top = middle - (first + second) / 2;
  const QColor quiet = chip_.state == ChipState::kNotSent ? look.failed
                       : under_way                        ? look.link
                       : on                               ? look.quiet_on
                                                          : look.quiet;
  words(painter, {left, top, right - left, first}, scaled_font(1, true), look.text,
        qt::from_code_page(chip_.name));
  words(painter, {left, top + first, right - left, second}, scaled_font(kSmall), quiet,
        second_line());
  const bool retry = chip_.state == ChipState::kNotSent;
  const QRectF sign(width() - kPadding - kSign, middle - kSign / 2.0, kSign, kSign);
  draw_icon(painter, retry ? LineIcon::kRetry : LineIcon::kPower, sign,
            retry ? look.failed
            : on  ? look.warm
                  : look.quiet);
  if (shows_focus(*this)) draw_focus(painter, rect(), kBoxCorner, look);
}

TileButton::TileButton(QWidget* parent) : QAbstractButton(parent) {
  prepare(this);
}

void TileButton::show_tile(const RoomTile& tile) {
  tile_ = tile;
  const auto on = std::count(tile.on.begin(), tile.on.end(), true);
  const QString name = qt::from_code_page(tile.name);
  setText(on > 0 ? tr("%1 of %2 on").arg(on).arg(tile.on.size())
                 : tr("%1 off").arg(tile.on.size()));
  if (tile.on.empty()) setText(tr("No devices yet"));
  setAccessibleName(name + ", " + text());
  setToolTip(tip_text(tr("Open %1").arg(name)));
  update();
}

QSize TileButton::sizeHint() const {
  return {200, std::max(92, line_of(kNames, true) + 68)};
}

void TileButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  const bool over = underMouse();
  draw_box(painter, rect(), kBoxCorner,
           isDown() ? look.press
           : over   ? look.over
                    : look.card,
           over || isDown() ? look.edge : look.line);
  const int line = line_of(kNames, true);
  const int side = 16;
  const QFont small = scaled_font(kSmall);
  const int count = QFontMetrics(small).horizontalAdvance(text());
  const QRect top(side, 10, width() - 2 * side, line + 4);
  // Without dots their place has room for the words, and the name for itself.
  const bool empty = tile_.on.empty();
  const QRect low(side, height() - 14 - line, width() - 2 * side, line);
  if (empty)
    words(painter, low, small, look.quiet, text());
  else
    words(painter, top, small, look.quiet, text(), Qt::AlignRight);
  words(painter, top.adjusted(0, 0, empty ? 0 : -count - 12, 0), scaled_font(kNames, true),
        look.text, qt::from_code_page(tile_.name));

  const QString rest_words = "+99";
  const int rest_width = QFontMetrics(small).horizontalAdvance(rest_words) + 4;
  const int room = std::max(1, (width() - 2 * side - rest_width) / kDotStep);
  const int total = static_cast<int>(tile_.on.size());
  const bool all = total * kDotStep <= width() - 2 * side;
  const int shown = all ? total : std::min(room, total);
  const int y = height() - 16 - kDot;
  // Those that are on come first, so that a full row hides none of them before it must.
  const int lit = static_cast<int>(std::count(tile_.on.begin(), tile_.on.end(), true));
  for (int dot = 0; dot < shown; ++dot) {
    const bool on = all ? tile_.on[static_cast<std::size_t>(dot)] : dot < lit;
    draw_box(painter, QRectF(side + dot * kDotStep, y, kDot, kDot), kDot / 2.0,
             on ? look.amber : QColor(Qt::transparent), on ? look.line_on : look.edge, 1.5);
  }
  if (!all)
    words(painter, {side + shown * kDotStep, y - 6, rest_width, kDot + 12}, small, look.quiet,
          QString("+%1").arg(total - shown));
  if (shows_focus(*this)) draw_focus(painter, rect(), kBoxCorner, look);
}

AddTile::AddTile(const QString& text, QWidget* parent) : QAbstractButton(parent) {
  setText(text);
  prepare(this);
}

QSize AddTile::sizeHint() const {
  return {200, std::max(92, line_of(kNames, true) + 68)};
}

void AddTile::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kBoxCorner,
           isDown()       ? look.press
           : underMouse() ? look.over
                          : QColor(Qt::transparent),
           look.edge, 1.5, Qt::DashLine);
  const QFont font = scaled_font(1, true);
  const int wide = QFontMetrics(font).horizontalAdvance(text());
  const int left = std::max(12, (width() - wide - kSign - 8) / 2);
  draw_icon(painter, LineIcon::kPlus, QRectF(left, height() / 2.0 - kSign / 2.0, kSign, kSign),
            look.link);
  words(painter, {left + kSign + 8, 0, width() - left - kSign - 16, height()}, font, look.link,
        text());
  if (shows_focus(*this)) draw_focus(painter, rect(), kBoxCorner, look);
}

}  // namespace homewarden::view
