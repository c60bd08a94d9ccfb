#include "ui/qt/control_painting.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <algorithm>

#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr const char* kKind = "homewarden_kind";

bool has(const QStyleOption* option, QStyle::StateFlag flag) {
  return (option->state & flag) != 0;
}

bool is_pressed(const QStyleOption* option) {
  return has(option, QStyle::State_Sunken) && has(option, QStyle::State_Enabled);
}

bool is_over(const QStyleOption* option) {
  return has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
}

struct Surface {
  QColor fill;
  QColor border;
};

Surface surface_of(ButtonKind kind, const QStyleOption* option, const Look& look) {
  const bool enabled = has(option, QStyle::State_Enabled);
  const QColor idle = is_pressed(option) ? look.press : is_over(option) ? look.over : look.card;
  switch (kind) {
    case ButtonKind::kPrimary: {
      if (!enabled) return {Qt::transparent, look.line};
      const int deep = is_pressed(option) ? 80 : is_over(option) ? 90 : 100;
      const QColor fill = mixed(look.primary, look.dark ? Qt::white : Qt::black, deep);
      return {fill, fill};
    }
    case ButtonKind::kFlat:
      return {is_pressed(option) || is_over(option) ? idle : QColor(Qt::transparent),
              Qt::transparent};
    case ButtonKind::kGhost:
      return {idle, look.line};
    case ButtonKind::kPlain:
    case ButtonKind::kDanger:
      break;
  }
  if (has(option, QStyle::State_On)) return {look.selected, look.edge};
  return {enabled ? idle : QColor(Qt::transparent), enabled ? look.edge : look.line};
}

}  // namespace

void set_kind(QPushButton* button, ButtonKind kind) {
  button->setProperty(kKind, static_cast<int>(kind));
  button->setFlat(kind == ButtonKind::kFlat);
  if (kind == ButtonKind::kPrimary) {
    QFont font;  // the rest stays what the desktop says
    font.setBold(true);
    button->setFont(font);
  }
  button->update();
}

ButtonKind kind_of(const QWidget* widget) {
  const QVariant kind = widget ? widget->property(kKind) : QVariant();
  if (kind.isValid()) return static_cast<ButtonKind>(kind.toInt());
  const auto* button = qobject_cast<const QPushButton*>(widget);
  return button && button->isFlat() ? ButtonKind::kFlat : ButtonKind::kPlain;
}

bool shows_focus(const QStyleOption* option) {
  return has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
}

QColor words_of(const QWidget* button, bool enabled, const Look& look) {
  const ButtonKind kind = kind_of(button);
  if (!enabled) return look.quiet;
  if (kind == ButtonKind::kPrimary) return Qt::white;
  if (kind == ButtonKind::kFlat) return look.link;
  return kind == ButtonKind::kDanger ? look.failed : look.text;
}

void draw_button(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
  const Look& look = look_of(option->palette);
  const Surface surface = surface_of(kind_of(widget), option, look);
  draw_box(*painter, option->rect, kControlCorner, surface.fill, surface.border);
  if (shows_focus(option)) draw_focus(*painter, option->rect, kControlCorner, look);
}

void draw_field(const QStyleOption* option, QPainter* painter) {
  const Look& look = look_of(option->palette);
  const bool focus = has(option, QStyle::State_HasFocus);
  const bool enabled = has(option, QStyle::State_Enabled);
  draw_box(*painter, option->rect, kControlCorner, enabled ? look.field : look.ground,
           focus     ? look.focus
           : enabled ? look.edge
                     : look.line,
           focus ? 2 : 1);
}

void draw_check(const QStyleOption* option, QPainter* painter) {
  const Look& look = look_of(option->palette);
  const bool enabled = has(option, QStyle::State_Enabled);
  const bool on = has(option, QStyle::State_On);
  const QColor border = on ? look.primary : look.edge;
  const QColor ground = is_over(option) ? look.over : look.field;
  draw_box(*painter, option->rect, 5, on && enabled ? look.primary : ground,
           enabled ? border : look.line, 1.5);
  if (on)
    draw_icon(*painter, LineIcon::kCheck, option->rect.adjusted(1, 1, -1, -1),
              enabled ? QColor(Qt::white) : look.quiet);
}

void draw_row(const QStyleOption* option, QPainter* painter) {
  const Look& look = look_of(option->palette);
  const bool selected = has(option, QStyle::State_Selected);
  if (!selected && !is_over(option)) return;
  painter->fillRect(option->rect, selected ? look.selected : look.over);
}

void draw_scroll_bar(const QStyle& style, const QStyleOptionSlider& option, QPainter* painter,
                     const QWidget* widget) {
  const Look& look = look_of(option.palette);
  if (option.maximum <= option.minimum) return;
  QRect handle =
      style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, widget);
  handle = option.orientation == Qt::Vertical ? handle.adjusted(3, 2, -3, -2)
                                              : handle.adjusted(2, 3, -2, -3);
  const bool active = is_over(&option) || is_pressed(&option);
  const double corner = std::min(handle.width(), handle.height()) / 2.0;
  draw_box(*painter, handle, corner, active ? look.quiet : look.edge, Qt::transparent);
}

}  // namespace homewarden::view
