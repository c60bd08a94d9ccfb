#include "ui/qt/halves.h"

#include <QEvent>

namespace homewarden::view {
namespace {

constexpr int kGap = 24;

QVBoxLayout* make_column(QWidget* half) {
  auto* column = new QVBoxLayout(half);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(12);
  return column;
}

}  // namespace

Halves::Halves(int least, int right, QWidget* parent)
    : QWidget(parent),
      least_(least),
      right_width_(right),
      columns_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      left_half_(new QWidget(this)),
      right_half_(new QWidget(this)),
      left_(make_column(left_half_)),
      right_(make_column(right_half_)) {
  columns_->setContentsMargins(0, 0, 0, 0);
  columns_->setSpacing(kGap);
  columns_->addWidget(left_half_, 1);
  columns_->addWidget(right_half_, right == 0 ? 1 : 0);
  columns_->setDirection(QBoxLayout::TopToBottom);
}

void Halves::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fit();
}

void Halves::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) fit();
}

void Halves::fit() {
  const int letter = fontMetrics().averageCharWidth();
  const bool beside = width() >= least_ * letter;
  columns_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  if (right_width_ == 0) return;
  right_half_->setMinimumWidth(beside ? right_width_ * letter : 0);
  right_half_->setMaximumWidth(beside ? right_width_ * letter : QWIDGETSIZE_MAX);
}

}  // namespace homewarden::view
