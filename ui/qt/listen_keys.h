#pragma once

#include <QObject>

#include "ui/frm_character.h"
#include "ui/frm_speech_sheet.h"
#include "ui/qt/x11_desktop.h"
#include "ui/settings_panels.h"

class QKeyEvent;

namespace homewarden::view {

// Whether a key can be given to listening: not one that writes, or that fields and lists need.
bool can_begin_listening(QKeyCombination key);

// The keys of speech, in all windows of the program and where the desktop can do it in all others:
// Scroll Lock and a person's own begin to listen and give up, Escape gives up; Enter and Escape
// answer what the figure has asked, until another key is pressed: then they belong to whatever the
// person is writing.
class ListenKeys : public QObject {
 public:
  ListenKeys(SpeechPanel& panel, FrmCharacter& figure, FrmSpeechSheet& sheet, QObject* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void listen_for_keys();
  bool is_listen_key(const QKeyEvent& key) const;
  bool takes(const QKeyEvent& key) const;
  void take(const QKeyEvent& key);

  SpeechPanel& panel_;
  FrmCharacter& figure_;
  FrmSpeechSheet& sheet_;
  GlobalKeys global_;
  bool answers_ = false;    // Enter and Escape do
  bool recording_ = false;  // a key is being chosen
};

}  // namespace homewarden::view
