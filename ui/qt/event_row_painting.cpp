#include "ui/qt/event_row_painting.h"

#include <QFontInfo>
#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"
#include "ui/qt/wrapped_lines.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 12;
constexpr int kGap = 8;
constexpr int kDot = 10;
constexpr int kLeastRow = 56;
constexpr int kSignSide = 32;
constexpr int kMostLines = 6;  // of a detail

QFont caption_font(const QWidget& list) {
  return scaled_font(list.font(), 0.86, false);
}

QFont group_font(const QWidget& list) {
  return scaled_font(list.font(), 0.86, true);
}

QFont time_font(const QWidget& list) {
  return scaled_font(list.font(), 1.14, true);
}

int sign_side(const QWidget& list) {
  return std::max(kSignSide, list.fontMetrics().height() + 8);
}

int heading_height(const QWidget& list) {
  return QFontMetrics(group_font(list)).height() + 16;
}

// The widest time that there is, whatever the figures of the font.
int time_width(const QWidget& list) {
  const QFontMetrics metrics(time_font(list));
  int widest = 0;
  for (const char figure : {'0', '1', '4', '8'})
    widest = std::max(widest, metrics.horizontalAdvance(QString(4, QLatin1Char(figure)) + ":"));
  return widest;
}

// With large text the words stand below the time.
bool is_tall(const QWidget& list, int width) {
  return width < list.fontMetrics().averageCharWidth() * 44;
}

int icon_side(const QWidget& list) {
  return list.fontMetrics().height() + 2;
}

// From the beginning of a row to its words.
int front_width(const QWidget& list) {
  return time_width(list) + kGap + icon_side(list) + kGap + kDot + kGap + 4;
}

int until_width(const QWidget& list, const EventFace& face) {
  return QFontMetrics(caption_font(list)).horizontalAdvance(qt::from_code_page(face.until)) + kGap;
}

int warning_width(const QWidget& list, const EventFace& face) {
  return face.warning.empty() ? 0 : QFontMetrics(caption_font(list)).height() + 4;
}

QString detail_of(const EventFace& face) {
  return qt::from_code_page(face.warning.empty() ? face.detail : face.detail + ". " + face.warning);
}

// How many lines the detail takes while nothing else stands beside it.
int detail_lines(const QWidget& list, const EventFace& face, int width) {
  int room = width - 2 * kSide - warning_width(list, face);
  if (!is_tall(list, width)) room -= front_width(list) + until_width(list, face);
  const QStringList lines = wrapped_lines(detail_of(face), caption_font(list), room, kMostLines);
  return static_cast<int>(lines.size());
}

LineIcon icon_of(EventFace::Clock clock) {
  return clock == EventFace::Clock::kSunrise ? LineIcon::kSunrise : LineIcon::kSunset;
}

struct Canvas {
  QPainter& painter;
  const QWidget& list;
  const Look& look;
  const EventFace& face;
  const EventRowState& state;

  int words(const QRect& room, const QString& text, const QFont& font, const QColor& colour) const {
    painter.setFont(font);
    painter.setPen(colour);
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
    return std::min(metrics.horizontalAdvance(shown), room.width());
  }

  // What is done is never cut off by a long name.
  void headline(QRect room) const {
    const QString action = " " + qt::from_code_page(face.action);
    const int rest = QFontMetrics(list.font()).horizontalAdvance(action) + 2;
    QRect name = room;
    name.setRight(std::max(name.left(), room.right() - rest));
    const QFont bold = scaled_font(list.font(), 1, true);
    room.setLeft(room.left() + words(name, qt::from_code_page(face.device), bold, look.text));
    words(room, action, list.font(), look.text);
  }

  void dot(const QRectF& place) const {
    draw_box(painter, centred(place, kDot), kDot / 2.0,
             face.on ? look.amber : QColor(Qt::transparent), face.on ? look.line_on : look.edge,
             1.5);
  }

  void signs(const QRect& body) const {
    constexpr LineIcon kIcons[] = {LineIcon::kPlay, LineIcon::kEdit, LineIcon::kTrash};
    for (int sign = 0; sign < kEventSigns; ++sign) {
      const QRect place = event_sign(list, body, sign);
      if (state.sign_over == sign) draw_box(painter, place, kControlCorner, look.card, look.edge);
      const QColor colour = sign == 2 && state.sign_over == sign ? look.failed : look.quiet;
      draw_icon(painter, kIcons[sign], centred(place, list.fontMetrics().height()), colour);
    }
  }

  // What goes before the words; gives where these begin.
  int front(const QRect& room) const {
    const int time = time_width(list);
    words({room.left(), room.top(), time, room.height()}, qt::from_code_page(face.time),
          time_font(list), look.text);
    const int icon = icon_side(list);
    int left = room.left() + time + kGap;
    if (face.clock != EventFace::Clock::kTime)
      draw_icon(painter, icon_of(face.clock),
                centred(QRectF(left, room.top(), icon, room.height()), icon), look.quiet);
    left += icon + kGap;
    dot(QRectF(left, room.top(), kDot, room.height()));
    return left + kDot + kGap + 4;
  }

  // What stands at the right end; gives where it begins.
  int back(const QRect& body) const {
    if (state.signs) {
      signs(body);
      return event_sign(list, body, 0).left() - kGap;
    }
    const QString until = qt::from_code_page(face.until);
    const QFont font = caption_font(list);
    const int wide = QFontMetrics(font).horizontalAdvance(until);
    words({body.right() - kSide - wide, body.top(), wide + 2, body.height()}, until, font,
          look.quiet);
    return body.right() - kSide - wide - kGap;
  }

  // With the signs beside it, in as many lines as without.
  void below(const QRect& room) const {
    const QFont font = caption_font(list);
    const int line = QFontMetrics(font).height();
    const int left = room.left() + warning_width(list, face);
    if (!face.warning.empty())
      draw_icon(painter, LineIcon::kWarning, QRectF(room.left(), room.top(), line, line),
                look.failed);
    const int most = std::max(1, room.height() / line);
    int top = room.top();
    for (const QString& words_of_line :
         wrapped_lines(detail_of(face), font, room.right() - left, most)) {
      words({left, top, room.right() - left, line}, words_of_line, font, look.quiet);
      top += line;
    }
  }
};

}  // namespace

int event_row_height(const QWidget& list, const EventFace& face, bool begins_group, int width) {
  const int line = list.fontMetrics().height();
  const int caption = QFontMetrics(caption_font(list)).height();
  int body = line + detail_lines(list, face, width) * caption + 18;
  if (is_tall(list, width)) body += std::max(QFontMetrics(time_font(list)).height(), kSignSide) + 4;
  return std::max(kLeastRow, body) + (begins_group ? heading_height(list) : 0);
}

QRect event_row_body(const QWidget& list, const QRect& place, bool begins_group) {
  return begins_group ? place.adjusted(0, heading_height(list), 0, 0) : place;
}

QRect event_sign(const QWidget& list, const QRect& body, int sign) {
  const int side = sign_side(list);
  const int left = body.right() - kSide + 4 - (kEventSigns - sign) * side;
  const int top = is_tall(list, body.width()) ? body.top() + 4 : body.center().y() - side / 2;
  return {left, top, side, side};
}

void draw_event_row(QPainter& painter, const QWidget& list, const QRect& place,
                    const EventFace& face, const EventRowState& state) {
  const Look& look = look_of(list.palette());
  const Canvas canvas{painter, list, look, face, state};
  const QRect body = event_row_body(list, place, state.begins_group);
  if (state.begins_group)
    canvas.words({place.left() + kSide, place.top() + 4, place.width() - 2 * kSide,
                  heading_height(list) - 4},
                 qt::from_code_page(face.group), group_font(list), look.quiet);
  if (state.selected || state.over)
    draw_box(painter, body, kControlCorner, state.selected ? look.selected : look.over,
             Qt::transparent);
  else if (!state.ends_group)
    painter.fillRect(QRect(body.left() + kSide, body.bottom(), body.width() - 2 * kSide, 1),
                     look.line);
  const QRect room = body.adjusted(kSide, 4, -kSide, -4);
  const int line = list.fontMetrics().height();
  const int caption =
      detail_lines(list, face, body.width()) * QFontMetrics(caption_font(list)).height() + 2;
  if (is_tall(list, body.width())) {
    const int first = room.height() - line - caption - 4;
    canvas.front({room.left(), room.top(), room.width(), first});
    canvas.back({body.left(), room.top(), body.width(), first});
    canvas.headline({room.left(), room.top() + first, room.width(), line + 4});
    canvas.below({room.left(), room.bottom() - caption, room.width(), caption});
  } else {
    const int left = canvas.front(room);
    const int right = canvas.back(body);
    const int top = room.center().y() - (line + caption) / 2;
    canvas.headline({left, top, right - left, line});
    canvas.below({left, top + line, right - left, caption});
  }
  if (state.focus) draw_box(painter, body, kControlCorner, Qt::transparent, look.focus, 2);
}

QString event_headline(const EventFace& face) {
  return qt::from_code_page(face.device + " " + face.action);
}

}  // namespace homewarden::view
