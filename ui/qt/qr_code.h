#pragma once

#include <QString>
#include <QWidget>

namespace homewarden::view {

// A text as a square for the camera of a phone: black on white in every theme, with the quiet edge
// that cameras need. Shows nothing for a text that is too long for one.
class QrCode : public QWidget {
 public:
  explicit QrCode(QWidget* parent);

  void show_text(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QByteArray modules_;  // row by row, 1 for a dark one
  int side_ = 0;        // modules in a row
};

}  // namespace homewarden::view
