#include "ui/qt/free_place.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kAround = 48;   // of a pointer that is on nothing in particular
constexpr int kDistance = 8;  // to what is in use
constexpr int kShare = 4;     // of the window: what is larger is a page, and not itself in use

QRect on_desktop(const QWidget& widget, const QRect& part) {
  return {widget.mapToGlobal(part.topLeft()), part.size()};
}

bool is_small(const QSize& size, const QWidget& window) {
  return size.width() * size.height() * kShare < window.width() * window.height();
}

QRect under_keyboard(const QWidget& focus, const QWidget& window) {
  if (is_small(focus.size(), window)) return on_desktop(focus, focus.rect());
  if (const auto* list = qobject_cast<const QAbstractItemView*>(&focus))
    return on_desktop(*list->viewport(), list->visualRect(list->currentIndex()));
  return on_desktop(focus, focus.inputMethodQuery(Qt::ImCursorRectangle).toRect());
}

QRect under_pointer(const QWidget& window) {
  const QPoint pointer = QCursor::pos();
  const QWidget* widget = QApplication::widgetAt(pointer);
  if (!widget || widget->window() != &window) return {};
  if (!is_small(widget->size(), window))
    return {pointer - QPoint(kAround, kAround), QSize(2 * kAround, 2 * kAround)};
  while (widget->parentWidget() && is_small(widget->parentWidget()->size(), window))
    widget = widget->parentWidget();
  return on_desktop(*widget, widget->rect());
}

QPoint brought_into(const QPoint& place, const QSize& size, const QRect& screen) {
  const int right = std::max(screen.left(), screen.left() + screen.width() - size.width());
  const int bottom = std::max(screen.top(), screen.top() + screen.height() - size.height());
  return {std::clamp(place.x(), screen.left(), right), std::clamp(place.y(), screen.top(), bottom)};
}

}  // namespace

QPoint free_place(const QList<QPoint>& places, const QSize& size, const QList<QRect>& avoid,
                  const QRect& screen) {
  for (const QPoint& wanted : places) {
    const QPoint place = brought_into(wanted, size, screen);
    const bool covers = std::any_of(avoid.begin(), avoid.end(), [&](const QRect& one) {
      return QRect(place, size)
          .marginsAdded({kDistance, kDistance, kDistance, kDistance})
          .intersects(one);
    });
    if (!covers) return place;
  }
  return places.isEmpty() ? screen.topLeft() : brought_into(places.first(), size, screen);
}

QList<QRect> places_in_use(const QWidget& window) {
  if (!window.isVisible() || window.isMinimized()) return {};
  QList<QRect> places;
  const QWidget* focus = QApplication::focusWidget();
  if (focus && focus->isVisible()) places << under_keyboard(*focus, *focus->window());
  places << under_pointer(window);
  places.removeIf([](const QRect& place) { return place.isEmpty(); });
  return places;
}

QRect screen_around(const QPoint& point) {
  const QScreen* screen = QGuiApplication::screenAt(point);
  if (!screen) screen = QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect(0, 0, 640, 480);
}

}  // namespace homewarden::view
