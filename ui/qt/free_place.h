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

// What the person is using right now, in pixels of the desktop: the field that has the keyboard,
// also in a box beside the window, and the card that the pointer is on in the window.
QList<QRect> places_in_use(const QWidget& window);

// The part of the screen around a point that windows may use.
QRect screen_around(const QPoint& point);

}  // namespace homewarden::view
