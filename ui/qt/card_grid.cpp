#include "ui/qt/card_grid.h"

#include <QEvent>
#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kGap = 14;

}  // namespace

void CardGrid::add(QWidget* card) {
  card->installEventFilter(this);
  cards_ << card;
}

void CardGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

bool CardGrid::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent ||
      event->type() == QEvent::LayoutRequest)
    arrange();
  return QWidget::eventFilter(watched, event);
}

void CardGrid::arrange() {
  QSize size;
  QList<QWidget*> shown;
  for (QWidget* card : cards_) {
    if (card->isHidden()) continue;
    shown << card;
    size = size.expandedTo(card->sizeHint());
  }
  if (shown.isEmpty()) {
    setMinimumHeight(0);
    return;
  }
  const int columns = std::max(1, (width() + kGap) / (size.width() + kGap));
  int place = 0;
  for (QWidget* card : shown) {
    const int column = place % columns;
    const int row = place / columns;
    card->setGeometry(column * (size.width() + kGap), row * (size.height() + kGap), size.width(),
                      size.height());
    ++place;
  }
  const int rows = (place + columns - 1) / columns;
  setMinimumHeight(rows * (size.height() + kGap) - kGap);
}

}  // namespace homewarden::view
