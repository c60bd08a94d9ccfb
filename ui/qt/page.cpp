#include "ui/qt/page.h"

#include <QEvent>

#include "ui/qt/look.h"

namespace homewarden::view {
namespace {

QFont scaled(QFont font, double factor, QFont::Weight weight) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  return font;
}

// Stays readable when the desktop turns dark or light.
class QuietLabel : public QLabel {
 public:
  explicit QuietLabel(QWidget* parent) : QLabel(parent) {
    setForegroundRole(QPalette::WindowText);  // on a list it would be another
  }

 protected:
  void changeEvent(QEvent* event) override {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !updating_) recolour();
  }
  void showEvent(QShowEvent* event) override {
    QLabel::showEvent(event);
    recolour();
  }

 private:
  void recolour() {
    updating_ = true;
    QPalette colours = parentWidget() ? parentWidget()->palette() : palette();
    colours.setColor(QPalette::WindowText, quiet_text_colour(colours));
    setPalette(colours);
    updating_ = false;
  }
  bool updating_ = false;
};

}  // namespace

QColor quiet_text_colour(const QPalette& palette) {
  return look_of(palette).quiet;
}

QLabel* make_heading(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setFont(scaled(label->font(), 1.2, QFont::DemiBold));
  return label;
}

QLabel* make_quiet_label(QWidget* parent) {
  auto* label = new QuietLabel(parent);
  label->setWordWrap(true);
  return label;
}

Page::Page(const QString& title, int max_width, QWidget* parent)
    : QScrollArea(parent), body_(new QWidget), rows_(new QVBoxLayout), title_(new QLabel(title)) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  auto* outer = new QWidget;
  auto* columns = new QHBoxLayout(outer);
  columns->setContentsMargins(kMargin, kMargin - 6, kMargin, kMargin - 6);
  columns->addWidget(body_, 1);
  if (max_width > 0) {
    body_->setMaximumWidth(max_width);
    columns->addStretch();
  }
  body_->setLayout(rows_);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(12);
  title_->setFont(scaled(title_->font(), 1.7, QFont::DemiBold));
  title_->setTextFormat(Qt::PlainText);
  rows_->addWidget(title_);
  setWidget(outer);
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
