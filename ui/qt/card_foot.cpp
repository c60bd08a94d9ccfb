#include "ui/qt/card_foot.h"

#include <QEvent>
#include <QGridLayout>

#include "platform/qt/text_codec.h"
#include "ui/qt/page.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr const char* kLink =
    "QPushButton { padding: 3px 6px; border: 1px solid transparent; border-radius: 6px;"
    " color: %1; text-decoration: underline; }"
    "QPushButton:focus { border-color: %1; }"
    "QPushButton:pressed { border-color: %1; }";

}  // namespace

CardFoot::CardFoot(Property<CardState>& state, Label& not_sent, QWidget* parent)
    : QWidget(parent),
      state_(state),
      not_sent_(not_sent),
      text_(new QLabel(this)),
      link_(new QPushButton(this)) {
  auto* place = new QGridLayout(this);
  place->setContentsMargins(0, 0, 0, 0);
  place->addWidget(text_, 0, 0, Qt::AlignCenter);
  place->addWidget(link_, 0, 0, Qt::AlignCenter);
  text_->setTextFormat(Qt::PlainText);
  link_->setFlat(true);
  link_->setCursor(Qt::PointingHandCursor);
  recolour();
  follow(not_sent.caption, this, [this](const std::string& text) {
    link_->setText(qt::from_code_page(text).replace("&", "&&"));
    setFixedHeight(link_->sizeHint().height());
    refresh();
  });
  follow(not_sent.tool_tip, this, [this](const std::string& tip) {
    link_->setToolTip(tip_text(tip));
    link_->setAccessibleDescription(qt::from_code_page(tip));
  });
  watch(not_sent.visible.changed, this, [this] { refresh(); });
  follow(state, this, [this](CardState) { refresh(); });
  connect(link_, &QPushButton::clicked, this, [this] { not_sent_.click(); });
}

QString CardFoot::words() const {
  switch (state_.get()) {
    case CardState::kWaiting:
      return tr("Waiting ...");
    case CardState::kSending:
      return tr("Sending ...");
    case CardState::kIdle:
      break;
  }
  return not_sent_.visible ? qt::from_code_page(not_sent_.caption.get()) : QString();
}

void CardFoot::refresh() {
  const bool link_goes = !warns() && link_->hasFocus();
  if (link_goes && neighbour_) neighbour_->setFocus();
  text_->setVisible(!warns());
  text_->setText(words());
  link_->setVisible(warns());
}

QColor CardFoot::warning_colour(const QPalette& palette) {
  const bool dark = palette.color(QPalette::Base).lightness() < 128;
  return dark ? QColor(0xFF, 0xB4, 0xA9) : QColor(0xB0, 0x20, 0x1A);
}

void CardFoot::recolour() {
  link_->setStyleSheet(QString(kLink).arg(warning_colour(palette()).name()));
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText,
                   mixed(colours.color(QPalette::Text), colours.color(QPalette::Base), 75));
  text_->setPalette(colours);
}

void CardFoot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) recolour();
  if (event->type() == QEvent::FontChange) setFixedHeight(link_->sizeHint().height());
}

}  // namespace homewarden::view
