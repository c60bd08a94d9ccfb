#pragma once

#include <QWidget>

#include "base/signal.h"

namespace homewarden::view {

// How loud it is: a bar in the colour of what is under way, and in that of a fault where it is too
// loud.
class LevelBar : public QWidget {
 public:
  // In percent.
  LevelBar(Property<int>& level, QWidget* parent);
  QSize sizeHint() const override { return {160, 12}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Property<int>& level_;
};

}  // namespace homewarden::view
