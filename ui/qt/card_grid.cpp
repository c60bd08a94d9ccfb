#include "ui/qt/card_grid.h"

#include <QEvent>
#include <algorithm>

#include "ui/qt/device_card.h"

namespace homewarden::view {
namespace {

constexpr int kGap = 16;
constexpr int kFewCards = 8;
constexpr int kFewColumns = 4;
constexpr int kMostColumns = 5;
constexpr int kLeastHeight = 208;
constexpr int kMostHeight = 320;
constexpr int kMostWidth = 320;

}  // namespace

void CardGrid::add(QWidget* card) {
  card->installEventFilter(this);
  cards_ << card;
}

void CardGrid::set_page_height(int height) {
  if (page_height_ == height) return;
  page_height_ = height;
  arrange();
}

void CardGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

bool CardGrid::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent ||
      event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange)
    arrange();
  return QWidget::eventFilter(watched, event);
}

// As many columns as have room for their words; rows so high that two fill the page.
void CardGrid::arrange() {
  QSize least;
  QList<QWidget*> shown;
  for (QWidget* card : cards_) {
    if (card->isHidden()) continue;
    shown << card;
    least = least.expandedTo(card->minimumSizeHint());
  }
  if (shown.isEmpty()) {
    setMinimumHeight(0);
    return;
  }
  const int ring = DeviceCard::kRing;
  const int free = width() - 2 * ring;
  const int least_width = least.width() - 2 * ring;
  int columns = shown.size() <= kFewCards ? kFewColumns : kMostColumns;
  while (columns > 1 && (free - (columns - 1) * kGap) / columns < least_width) --columns;
  const int card_width = std::min(kMostWidth, (free - (columns - 1) * kGap) / columns);
  const int least_height = std::max(kLeastHeight, least.height() - 2 * ring);
  const int card_height =
      std::clamp((page_height_ - kGap) / 2, least_height, std::max(least_height, kMostHeight));
  int place = 0;
  for (QWidget* card : shown) {
    const int x = (place % columns) * (card_width + kGap);
    const int y = (place / columns) * (card_height + kGap);
    card->setGeometry(x, y, card_width + 2 * ring, card_height + 2 * ring);
    ++place;
  }
  const int rows = (place + columns - 1) / columns;
  setMinimumHeight(rows * (card_height + kGap) - kGap + 2 * ring);
}

}  // namespace homewarden::view
