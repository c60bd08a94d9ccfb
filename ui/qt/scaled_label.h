#pragma once

#include <QLabel>

#include "ui/qt/scaled_font.h"

namespace homewarden::view {

// A text at a factor of the desktop's size, also when that changes, in the words' colour or a
// quieter one. Its text is never taken for markup.
class ScaledLabel : public QLabel {
 public:
  enum class Tone { kText, kQuiet, kLink, kFailed };

  explicit ScaledLabel(double factor, bool bold = false, Tone tone = Tone::kText,
                       QWidget* parent = nullptr);
  void set_tone(Tone tone);

 protected:
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void recolour();

  double factor_;
  bool bold_;
  Tone tone_;
  bool updating_ = false;
};

}  // namespace homewarden::view
