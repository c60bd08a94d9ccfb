#include "ui/qt/page.h"

#include <QEvent>
#include <QScopedValueRollback>

#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"

namespace homewarden::view {
QColor quiet_text_colour(const QPalette& palette) {
  return look_of(palette).quiet;
}

QLabel* make_heading(const QString& text, QWidget* parent) {
  auto* label = new ScaledLabel(1.14, true, ScaledLabel::Tone::kText, parent);
  label->setText(text);
  return label;
}

QLabel* make_quiet_label(QWidget* parent) {
  auto* label = new ScaledLabel(1.0, false, ScaledLabel::Tone::kQuiet, parent);
  label->setWordWrap(true);
  return label;
}

Page::Page(const QString& title, int max_width, QWidget* parent)
    : QScrollArea(parent),
      body_(new QWidget),
      rows_(new QVBoxLayout),
      head_(new QHBoxLayout),
      title_(new ScaledLabel(2.0, true)),
      subtitle_(make_quiet_label(body_)) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  auto* outer = new QWidget;
  auto* columns = new QHBoxLayout(outer);
  columns->setContentsMargins(kMargin, kMargin - 4, kMargin, kMargin - 4);
  columns->addWidget(body_, 1);
  if (max_width > 0) {
    body_->setMaximumWidth(max_width);
    columns->addStretch();
  }
  body_->setLayout(rows_);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(12);
  title_->setText(title);
  title_->setWordWrap(true);
  subtitle_->setTextFormat(Qt::PlainText);
  subtitle_->hide();
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->addWidget(title_);
  words->addWidget(subtitle_);
  head_->setSpacing(12);
  head_->addLayout(words, 1);
  rows_->addLayout(head_);
  setWidget(outer);
}

bool Page::eventFilter(QObject* watched, QEvent* event) {
  if (watched != widget() || event->type() != QEvent::Resize)
    return QScrollArea::eventFilter(watched, event);
  if (fitting_) return false;
  const QScopedValueRollback<bool> fitting(fitting_, true);
  return QScrollArea::eventFilter(watched, event);
}

void Page::add_action(QWidget* action) {
  head_->addWidget(action, 0, Qt::AlignVCenter);
}

void Page::show_subtitle() {
  subtitle_->show();
}

QLabel* Page::add_text(const QString& text, bool quiet) {
  QLabel* label = quiet ? make_quiet_label(body_) : new QLabel(body_);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  rows_->addWidget(label);
  return label;
}

QLabel* Page::add_heading(const QString& text) {
  QLabel* label = make_heading(text, body_);
  rows_->addSpacing(kHeadingGap);
  rows_->addWidget(label);
  return label;
}

QFormLayout* Page::add_form() {
  auto* form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  form->setHorizontalSpacing(18);
  form->setVerticalSpacing(10);
  rows_->addLayout(form);
  return form;
}

}  // namespace homewarden::view
