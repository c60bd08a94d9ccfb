#include "ui/qt/card_layout.h"

#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kSide = 20;
constexpr int kTop = 36;
constexpr int kLeastTop = 16;
constexpr int kFoot = 12;
constexpr int kGap = 12;
constexpr int kPillGap = 8;
constexpr int kLow = 32;
constexpr int kPicture = 112;
constexpr int kLeastPicture = 80;
constexpr int kMostPicture = 160;
constexpr int kPictureStep = 16;
constexpr int kLeastWidth = 176;

int name_height(const QFontMetrics& metrics) {
  return std::max(24, metrics.height() + 8);
}

int pill_height(const QFontMetrics& metrics) {
  return std::max(28, metrics.height() + 8);
}

int words_height(const QFontMetrics& metrics) {
  return kGap + name_height(metrics) + kPillGap + pill_height(metrics) + kGap + kLow + kFoot;
}

}  // namespace

CardLayout::CardLayout(const QRectF& whole, const QFontMetrics& metrics) : card(whole) {
  const double free = card.height() - words_height(metrics);
  const int steps = static_cast<int>((free - kTop - kLeastPicture) / kPictureStep);
  const double side =
      std::clamp(kLeastPicture + std::max(0, steps) * kPictureStep, kLeastPicture, kMostPicture);
  double y = card.top() + std::clamp<double>((free - side + kTop) / 2, kLeastTop, 2.0 * kTop);
  picture = QRectF(card.center().x() - side / 2, y, side, side);
  y += side + kGap;
  name = QRectF(card.left() + kSide / 2.0, y, card.width() - kSide, name_height(metrics));
  y += name.height() + kPillGap;
  pill = QRectF(card.left() + kSide / 2.0, y, card.width() - kSide, pill_height(metrics));
  y += pill.height() + kGap;
  low = QRectF(card.left() + kSide, y, card.width() - 2 * kSide, kLow);
  top = QRectF(card.left() + kGap, card.top() + 4, card.width() - 2 * kGap, kLow);
}

QSize CardLayout::wanted(const QFontMetrics& metrics) {
  return {std::max(kLeastWidth, metrics.averageCharWidth() * 20),
          kTop + kPicture + words_height(metrics)};
}

QSize CardLayout::least(const QFontMetrics& metrics) {
  return {wanted(metrics).width(), kLeastTop + kLeastPicture + words_height(metrics)};
}

}  // namespace homewarden::view
