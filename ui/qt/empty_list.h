#pragma once

#include <QWidget>
#include <functional>

#include "ui/controls.h"
#include "ui/qt/line_icons.h"

namespace homewarden::view {

// What stands where rows would be while there are none: a drawing, a sentence, one button. Shown
// while the label is.
class EmptyList : public QWidget {
 public:
  EmptyList(LineIcon drawing, Label& sentence, const QString& button,
            const std::function<void()>& pressed, QWidget* parent);
};

}  // namespace homewarden::view
