#pragma once

#include <memory>

#include "ui/frm_character.h"
#include "ui/frm_speech_sheet.h"
#include "ui/qt/character_view.h"
#include "ui/qt/listen_keys.h"
#include "ui/qt/speech_sheet_view.h"
#include "ui/settings_panels.h"

namespace homewarden::view {

// All that is seen of speech beside the window. Figure and sheet are built when they are first
// shown: most sittings need neither.
class SpeechView : public QObject {
 public:
  // The forms and the window must outlive it.
  SpeechView(SpeechPanel& panel, FrmCharacter& figure, FrmSpeechSheet& sheet, QWidget* window);

 private:
  CharacterView& figure();
  void show_commands();

  FrmCharacter& figure_form_;
  QWidget* window_;
  ListenKeys keys_;
  std::unique_ptr<CharacterView> figure_;
  std::unique_ptr<SpeechSheetView> sheet_;
};

}  // namespace homewarden::view
