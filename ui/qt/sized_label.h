#pragma once

#include <QLabel>

namespace homewarden::view {

// Words whose size is a factor of the desktop's, which they follow, in a colour of the look. Long
// ones wrap; they are never taken for markup.
class SizedLabel : public QLabel {
 public:
  enum Tone { kText, kQuiet, kFailed, kLink };

  SizedLabel(double factor, bool bold, Tone tone, QWidget* parent);

  void set_tone(Tone tone);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void resize_words();
  void colour_words();

  double factor_;
  bool bold_;
  Tone tone_;
  bool changing_ = false;
};

}  // namespace homewarden::view
