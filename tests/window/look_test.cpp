#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "ui/qt/high_contrast.h"

namespace homewarden::testing {
namespace {

double luminance(const QColor& colour) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
         0.0722 * part(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(Look, WordsAreReadableOnEverythingTheyStandOn) {
  for (const view::Look* look : {&view::light_look(), &view::dark_look()}) {
    for (const QColor& ground : {look->ground, look->side, look->card, look->over, look->field}) {
      for (const QColor& words : {look->text, look->quiet, look->link, look->ok, look->failed})
        EXPECT_GE(contrast(words, ground), 4.5)
            << words.name().toStdString() << ground.name().toStdString();
      for (const QColor& mark : {look->edge, look->focus})
        EXPECT_GE(contrast(mark, ground), 3)
            << mark.name().toStdString() << ground.name().toStdString();
    }
    EXPECT_GE(contrast(look->text, look->selected), 4.5);
    EXPECT_GE(contrast(look->text, look->card_on), 4.5);
    EXPECT_GE(contrast(look->ink, look->amber), 4.5);
    EXPECT_GE(contrast(Qt::white, look->primary), 4.5);
    EXPECT_GE(contrast(look->message_text, look->message), 4.5);
    EXPECT_EQ(view::look_of(view::palette_of(*look)).dark, look->dark);
  }
}

// Catches: pale words on a pale ground where the desktop's own colours are no high contrast, and
// "on" that is told by a tint.
TEST(Look, HighContrastIsHighWhateverTheDesktopsColoursAre) {
  const auto colours = [](QRgb words, QRgb window, QRgb base) {
    return QPalette(QColor(words), QColor(window), QColor(words), QColor(words), QColor(words),
                    QColor(words), QColor(words), QColor(base), QColor(window));
  };
  const QPalette palettes[] = {
      colours(0xff000000, 0xffffffff, 0xffffffff), colours(0xffffffff, 0xff000000, 0xff000000),
      colours(0xffffff00, 0xff000000, 0xff000000), colours(0xff808080, 0xff909090, 0xffffffff),
      colours(0xff000000, 0xffefefef, 0xff000000)};
  for (const QPalette& palette : palettes) {
    for (const std::optional<bool> dark : {std::optional<bool>(), {true}, {false}}) {
      const view::Look look = view::high_contrast_look(palette, dark);
      EXPECT_EQ(look.dark, dark.value_or(look.dark));
      for (const QColor& ground :
           {look.ground, look.side, look.card, look.card_on, look.field, look.over, look.press})
        for (const QColor& words :
             {look.text, look.quiet, look.link, look.ok, look.failed, look.warm, look.edge})
          EXPECT_GE(contrast(words, ground), 7)
              << words.name().toStdString() << ground.name().toStdString();
      EXPECT_GE(contrast(look.text, look.selected), 7);
      EXPECT_GE(contrast(look.ink, look.amber), 7);
      EXPECT_GE(contrast(Qt::white, look.primary), 4.5);
      EXPECT_GE(contrast(look.message_text, look.message), 7);
      EXPECT_EQ(look.card_on, look.card);
    }
  }
}

}  // namespace
}  // namespace homewarden::testing
