#include "ui/qt/breaking_row.h"

#include <QEvent>
#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kGap = 8;

}  // namespace

BreakingRow::BreakingRow(QWidget* parent)
    : QWidget(parent),
      groups_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      first_(new QHBoxLayout),
      second_(new QHBoxLayout) {
  groups_->setContentsMargins(0, 0, 0, 0);
  groups_->setSpacing(kGap);
  groups_->addLayout(first_);
  groups_->addLayout(second_, 1);
  for (QHBoxLayout* group : {first_, second_}) group->setSpacing(kGap);
}

void BreakingRow::let_first_grow() {
  groups_->setStretch(0, 1);
  groups_->setStretch(1, 0);
}

QSize BreakingRow::minimumSizeHint() const {
  const int width = std::max(first_->minimumSize().width(), second_->minimumSize().width());
  return {width, groups_->minimumSize().height()};
}

bool BreakingRow::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) arrange();
  return QWidget::event(event);
}

void BreakingRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

void BreakingRow::arrange() {
  const int in_one_row =
      first_->minimumSize().width() + groups_->spacing() + second_->minimumSize().width();
  const auto direction = in_one_row <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (direction != groups_->direction()) groups_->setDirection(direction);
}

}  // namespace homewarden::view
