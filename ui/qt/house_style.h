#pragma once

#include <QProxyStyle>

class QPushButton;

namespace homewarden::view {

// How a push button is drawn.
enum class ButtonKind {
  kPlain,
  kPrimary,  // what a person most probably wants next; one on a page
  kGhost,    // beside others that matter more
  kFlat,     // a link
  kDanger,   // deletes
};

void set_kind(QPushButton* button, ButtonKind kind);

// Draws the controls in the colours of look.h: even surfaces, round corners, lines of one pixel,
// and a focus that is seen. What it does not draw itself comes from Qt's own Fusion style.
class HouseStyle : public QProxyStyle {
 public:
  HouseStyle();

  void polish(QWidget* widget) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace homewarden::view
