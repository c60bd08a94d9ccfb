#pragma once

#include <QDialog>
#include <QPointer>

#include "ui/frm_speech_sheet.h"

class QVBoxLayout;

namespace homewarden::view {

// The property sheet of speech beside the window. Everything in it counts at once.
class SpeechSheetView : public QDialog {
 public:
  SpeechSheetView(FrmSpeechSheet& form, QWidget* window);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void add_heading(const QString& text);
  QWidget* make_microphone();
  QWidget* make_strictness();
  QWidget* make_key();
  QWidget* make_test();
  QWidget* make_guessed();
  void show_guessed();

  FrmSpeechSheet& form_;
  QWidget* body_;
  QVBoxLayout* rows_;
  QWidget* names_ = nullptr;
  QVBoxLayout* name_rows_ = nullptr;
};

}  // namespace homewarden::view
