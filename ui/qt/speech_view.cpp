#include "ui/qt/speech_view.h"

#include <QApplication>
#include <QCursor>

#include "ui/qt/watch.h"

namespace homewarden::view {

SpeechView::SpeechView(SpeechPanel& panel, FrmCharacter& figure, FrmSpeechSheet& sheet,
                       QWidget* window)
    : figure_form_(figure), window_(window), keys_(panel, figure, sheet, this) {
  watch(figure.visible.changed, this, [this] {
    if (figure_form_.visible) this->figure();
  });
  watch(panel.cmd_commands.click, this, [this] { show_commands(); });
  watch(sheet.visible.changed, this, [this, &sheet] {
    if (sheet.visible && !sheet_) sheet_ = std::make_unique<SpeechSheetView>(sheet, window_);
  });
}

CharacterView& SpeechView::figure() {
  if (!figure_) figure_ = std::make_unique<CharacterView>(figure_form_, window_);
  return *figure_;
}

// Below what was pressed.
void SpeechView::show_commands() {
  const QWidget* pressed = QApplication::focusWidget();
  figure().show_commands(pressed ? pressed->mapToGlobal(pressed->rect().bottomLeft())
                                 : QCursor::pos());
}

}  // namespace homewarden::view
