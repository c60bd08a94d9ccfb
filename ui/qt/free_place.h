#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

class QWidget;

namespace homewarden::view {

// The first of the places, brought into the screen, at which something of this size covers nothing
// of what is to be avoided; the first of all when there is none.
QPoint free_place(const QList<QPoint>& places, const QSize& size, const QList<QRect>& avoid,
                  const QRect& screen);

// What the person is using in the window right now, in pixels of the desktop: the field that has
// the keyboard, the card that the pointer is on.
QList<QRect> places_in_use(const QWidget& window);

// The part of the screen around a point that windows may use.
QRect screen_around(const QPoint& point);

}  // namespace homewarden::view
