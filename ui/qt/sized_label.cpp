#include "ui/qt/sized_label.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>

#include "ui/qt/look.h"

namespace homewarden::view {

SizedLabel::SizedLabel(double factor, bool bold, Tone tone, QWidget* parent)
    : QLabel(parent), factor_(factor), bold_(bold), tone_(tone) {
  setWordWrap(true);
  setTextFormat(Qt::PlainText);
  resize_words();
  colour_words();
}

void SizedLabel::set_tone(Tone tone) {
  tone_ = tone;
  colour_words();
}

void SizedLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (changing_) return;
  if (event->type() == QEvent::ApplicationFontChange) resize_words();
  if (event->type() == QEvent::PaletteChange) colour_words();
}

void SizedLabel::resize_words() {
  const QScopedValueRollback<bool> changing(changing_, true);
  QFont words = QApplication::font();
  words.setPointSizeF(words.pointSizeF() * factor_);
  words.setBold(bold_);
  setFont(words);
}

void SizedLabel::colour_words() {
  const QScopedValueRollback<bool> changing(changing_, true);
  const Look& look = look_of(QApplication::palette());
  QPalette colours = QApplication::palette();
  const QColor colour = tone_ == kQuiet    ? look.quiet
                        : tone_ == kFailed ? look.failed
                        : tone_ == kLink   ? look.link
                                           : look.text;
  colours.setColor(QPalette::WindowText, colour);
  setPalette(colours);
}

}  // namespace homewarden::view
