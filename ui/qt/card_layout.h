#pragma once

#include <QFontMetrics>
#include <QRectF>
#include <QSize>

namespace homewarden::view {

// Where the parts of a device's card lie, on a grid of four pixels. The picture takes the height
// that the words leave.
struct CardLayout {
  CardLayout(const QRectF& card, const QFontMetrics& metrics);

  QRectF card;
  QRectF picture;
  QRectF name;
  QRectF pill;  // as wide as the card; the pill is as wide as its words
  QRectF low;   // slider, or "Retry"
  QRectF top;   // the address

  static QSize wanted(const QFontMetrics& metrics);
  static QSize least(const QFontMetrics& metrics);
};

}  // namespace homewarden::view
