#pragma once

#include <QWidget>

#include "ui/controls.h"

namespace homewarden::view {

// What the boxes of an editor say together, in a frame: a sentence, and quietly what follows from
// it.
class SentenceBox : public QWidget {
 public:
  SentenceBox(Label& sentence, QWidget* parent);
  SentenceBox(Label& sentence, Label& more, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace homewarden::view
