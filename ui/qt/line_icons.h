#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>

class QPainter;

namespace homewarden::view {

// Signs of one line, drawn in the colour of the words beside them.
enum class LineIcon {
  kHome,
  kClock,
  kMacros,
  kWeb,
  kProfiles,
  kDoor,
  kPlug,
  kSearch,
  kGear,
  kMore,
  kPlus,
  kRight,
  kDown,
  kLeft,
  kPower,
  kBell,
  kClose,
  kCheck,
  kWarning,
  kInfo,
  kRetry,
  kSunrise,
  kSunset,
  kTrash,
  kPlay,
  kTable,
  kCopy,
  kLink,
  kLock,
  kEdit,
  kMove,
  kPin,
  kFilter,
  kMicrophone,
  kPerson,
};

// Sharp at every size and scale of the screen.
void draw_icon(QPainter& painter, LineIcon icon, const QRectF& place, const QColor& colour);

// For widgets that want an icon: drawn when it is shown, in the words' colour of the palette.
QIcon make_icon(LineIcon icon);

// The sign as it is, in a colour of its own.
QIcon in_colour(const QIcon& icon, const QSize& size, qreal ratio, const QColor& colour);

}  // namespace homewarden::view
