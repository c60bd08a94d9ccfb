#pragma once

#include <QWidget>

#include "ui/house_panel.h"

namespace homewarden::view {

// A room without devices: a drawing, a sentence, one button.
class EmptyRoom : public QWidget {
 public:
  EmptyRoom(HousePanel& panel, QWidget* parent);
};

}  // namespace homewarden::view
