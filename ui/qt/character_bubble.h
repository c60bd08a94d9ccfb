#pragma once

#include <QRect>

#include "ui/frm_character.h"
#include "ui/qt/floating_window.h"

class QLabel;

namespace homewarden::view {

// What the figure says, beside it, with Yes and No while it asks. Shown while the figure is and has
// something to say.
class CharacterBubble : public FloatingWindow {
 public:
  explicit CharacterBubble(FrmCharacter& form);

  // Stands beside the figure, and covers nothing that is in use where that can be.
  void stand_beside(const QRect& figure, const QList<QRect>& avoid);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void show_words();
  void announce();

  FrmCharacter& form_;
  QLabel* words_;
  QWidget* answers_;
  QRect figure_;
  QList<QRect> avoid_;
};

}  // namespace homewarden::view
