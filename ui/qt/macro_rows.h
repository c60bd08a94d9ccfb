#pragma once

#include <QListWidget>

#include "ui/macro_panel.h"

namespace homewarden::view {

// The macros as sentences, one card each. A press on a card, Enter and Delete ask whether it is to
// go.
class MacroRows : public QListWidget {
 public:
  explicit MacroRows(MacroPanel& panel, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void speak();

  MacroPanel& panel_;
};

}  // namespace homewarden::view
