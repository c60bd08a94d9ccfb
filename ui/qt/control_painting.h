#pragma once

#include <QColor>

#include "ui/qt/house_style.h"
#include "ui/qt/look.h"

class QPainter;
class QStyleOption;
class QStyleOptionSlider;
class QWidget;

// The parts of the usual controls, for HouseStyle.
namespace homewarden::view {

ButtonKind kind_of(const QWidget* button);
// Of the words on the button.
QColor words_of(const QWidget* button, bool enabled, const Look& look);
// After a key, not after a press of the mouse: a person who points sees where.
bool shows_focus(const QStyleOption* option);

void draw_button(const QStyleOption* option, QPainter* painter, const QWidget* widget);
void draw_field(const QStyleOption* option, QPainter* painter);
void draw_check(const QStyleOption* option, QPainter* painter);
void draw_row(const QStyleOption* option, QPainter* painter);
void draw_scroll_bar(const QStyle& style, const QStyleOptionSlider& option, QPainter* painter,
                     const QWidget* widget);

}  // namespace homewarden::view
