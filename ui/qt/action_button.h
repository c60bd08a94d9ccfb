#pragma once

#include "ui/controls.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/steady_button.h"

namespace homewarden::view {

// A button with a sign before its words, both in the colour of its kind.
class ActionButton : public SteadyButton {
 public:
  ActionButton(LineIcon icon, ButtonKind kind, QWidget* parent);

  void set_icon(LineIcon icon);
  void turn_into(ButtonKind kind);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int sign_side() const;

  LineIcon icon_;
  ButtonKind kind_;
};

// Joined to its control.
ActionButton* make_action(Button& control, LineIcon icon, ButtonKind kind, QWidget* parent);

// A square one with a sign alone; `name` is its tip and what a screen reader says.
QPushButton* make_sign_button(LineIcon icon, const QString& name, QWidget* parent);

}  // namespace homewarden::view
