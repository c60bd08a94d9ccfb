#include "ui/qt/scaled_label.h"

#include <QEvent>

#include "ui/qt/look.h"

namespace homewarden::view {

ScaledLabel::ScaledLabel(double factor, bool bold, Tone tone, QWidget* parent)
    : QLabel(parent), factor_(factor), bold_(bold), tone_(tone) {
  setTextFormat(Qt::PlainText);
  setForegroundRole(QPalette::WindowText);  // on a list it would be another
  setFont(scaled_font(factor, bold));
}

void ScaledLabel::set_tone(Tone tone) {
  tone_ = tone;
  recolour();
}

bool ScaledLabel::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange) setFont(scaled_font(factor_, bold_));
  return QLabel::event(event);
}

void ScaledLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && !updating_) recolour();
}

void ScaledLabel::showEvent(QShowEvent* event) {
  QLabel::showEvent(event);
  recolour();
}

void ScaledLabel::recolour() {
  if (tone_ == Tone::kText) return;
  updating_ = true;
  QPalette colours = parentWidget() ? parentWidget()->palette() : palette();
  const Look& look = look_of(colours);
  colours.setColor(QPalette::WindowText, tone_ == Tone::kQuiet  ? look.quiet
                                         : tone_ == Tone::kLink ? look.link
                                                                : look.failed);
  setPalette(colours);
  updating_ = false;
}

}  // namespace homewarden::view
