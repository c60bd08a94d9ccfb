#include "ui/qt/card_grid.h"

#include <QKeyEvent>
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

void CardGrid::set_page_width(int width) {
  if (page_width_ == width) return;
  page_width_ = width;
  arrange();
}

void CardGrid::focus_again(int card) {
  if (card >= 0) make_stop(cards_[card]);
  if (stop_ && stop_->isVisible()) stop_->setFocus(Qt::TabFocusReason);
}

void CardGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

bool CardGrid::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
    case QEvent::LayoutRequest:
    case QEvent::FontChange:
      arrange();
      break;
    case QEvent::FocusIn:
      make_stop(static_cast<QWidget*>(watched));
      break;
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      if (key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::KeypadModifier)
        return move_focus(static_cast<QWidget*>(watched), key.key());
      break;
    }
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

bool CardGrid::move_focus(const QWidget* from, int key) {
  const auto place = shown_.indexOf(from);
  if (place < 0) return false;
  const auto last = shown_.size() - 1;
  auto to = place;
  switch (key) {
    case Qt::Key_Left:
      to = place - 1;
      break;
    case Qt::Key_Right:
      to = place + 1;
      break;
    case Qt::Key_Up:
      to = place - columns_;
      break;
    case Qt::Key_Down:  // into a shorter last row too
      to = place / columns_ == last / columns_ ? last + 1 : std::min(place + columns_, last);
      break;
    case Qt::Key_Home:
      to = 0;
      break;
    case Qt::Key_End:
      to = last;
      break;
    default:
      return false;
  }
  if (to >= 0 && to <= last) shown_[to]->setFocus(Qt::TabFocusReason);
  return true;
}

void CardGrid::make_stop(QWidget* card) {
  stop_ = card;
  for (QWidget* one : shown_) one->setFocusPolicy(one == card ? Qt::StrongFocus : Qt::ClickFocus);
}

void CardGrid::focus_first() {
  if (!shown_.isEmpty()) shown_.front()->setFocus(Qt::TabFocusReason);
}

// As many columns as have room for their words; rows so high that two fill the page.
void CardGrid::arrange() {
  QSize least;
  QList<QWidget*>& shown = shown_;
  shown.clear();
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
  const int wide = page_width_ - 2 * ring;
  while (columns > 1 && (wide - (columns - 1) * kGap) / columns < least_width) --columns;
  const int card_width = std::min(kMostWidth, (free - (columns - 1) * kGap) / columns);
  const int least_height = std::max(kLeastHeight, least.height() - 2 * ring);
  const int card_height =
      std::clamp((page_height_ - kGap) / 2, least_height, std::max(least_height, kMostHeight));
  columns_ = columns;
  if (!shown.contains(stop_)) make_stop(shown.front());
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
