#pragma once

#include <QWidget>

#include "ui/home_panel.h"

namespace homewarden::view {

// The way of the sun over the day, from sunrise to sunset, and where it is now.
class SunArc : public QWidget {
 public:
  SunArc(OptionsPanel& options, QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  OptionsPanel& options_;
};

}  // namespace homewarden::view
