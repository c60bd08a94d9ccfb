#pragma once

#include <QColor>
#include <QPalette>
#include <optional>

namespace homewarden::view {

// The colours of the window by what they are for; docs/look-and-feel.md has the reasons. The pages'
// style sheets use the same ones (html/homewarden-base.css).
struct Look {
  bool dark = false;
  bool high_contrast = false;  // no glow, and nothing that is only a little lighter or darker

  QColor ground;  // the page
  QColor side;    // tree, editor, status bar
  QColor card;    // cards, boxes, menus
  QColor field;   // inputs
  QColor over;    // under the pointer
  QColor press;   // held down
  QColor line;    // separators, which carry no meaning
  QColor edge;    // outlines of controls

  QColor text;
  QColor quiet;     // second lines, labels
  QColor selected;  // the row, the segment that is chosen
  QColor primary;   // the main button, days, ticks; white words on it
  QColor link;      // links, and what is under way
  QColor focus;

  QColor amber;  // "on" and nothing else
  QColor ink;    // words on amber
  QColor card_on;
  QColor rim;      // the border of what is on
  QColor line_on;  // the same where it carries meaning
  QColor quiet_on;
  QColor warm;  // signs on what is on
  QColor glow;

  QColor ok;
  QColor failed;
  QColor failed_ground;
  QColor message;
  QColor message_text;
  QColor message_link;
  QColor scrim;  // over what cannot be used now
};

const Look& light_look();
const Look& dark_look();

// The one that the palette was made of; for a palette of the desktop's own, the one that is as
// dark. While a look is used for everything, that one.
const Look& look_of(const QPalette& palette);

// Nothing: light or dark as the palette is.
void use_for_everything(const std::optional<Look>& look);

// Words that are disabled stay readable.
QPalette palette_of(const Look& look);

// `percent` of the colour, the rest of the other.
QColor mixed(const QColor& colour, const QColor& other, int percent);

}  // namespace homewarden::view
