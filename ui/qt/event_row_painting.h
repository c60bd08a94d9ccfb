#pragma once

#include <QRect>
#include <QString>

#include "ui/event_face.h"

class QPainter;
class QWidget;

namespace homewarden::view {

// How one event looks in a list.
struct EventRowState {
  bool selected = false;
  bool over = false;
  bool focus = false;
  bool begins_group = false;  // its heading stands above it
  bool ends_group = false;    // no line below it
  bool signs = false;         // run, edit and delete to press
  int sign_over = -1;
};

constexpr int kEventSigns = 3;

int event_row_height(const QWidget& list, const EventFace& face, bool begins_group, int width);

// The row without the heading.
QRect event_row_body(const QWidget& list, const QRect& place, bool begins_group);
// Run, edit, delete, by their number.
QRect event_sign(const QWidget& list, const QRect& body, int sign);

void draw_event_row(QPainter& painter, const QWidget& list, const QRect& place,
                    const EventFace& face, const EventRowState& state);

// "Porch Light on", "Garden, every day at sunset".
QString event_headline(const EventFace& face);

}  // namespace homewarden::view
