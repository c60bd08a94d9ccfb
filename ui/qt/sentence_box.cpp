#include "ui/qt/sentence_box.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

SentenceBox::SentenceBox(Label& sentence, QWidget* parent) : QWidget(parent) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(12, 10, 12, 10);
  rows->setSpacing(2);
  auto* words = new SizedLabel(1.0, false, SizedLabel::kText, this);
  bind(sentence, words);
  rows->addWidget(words);
}

SentenceBox::SentenceBox(Label& sentence, Label& more, QWidget* parent)
    : SentenceBox(sentence, parent) {
  auto* follows = new SizedLabel(1.0, false, SizedLabel::kQuiet, this);
  bind(more, follows);
  layout()->addWidget(follows);
  follow(more.caption, follows, [follows, &more](const std::string& text) {
    follows->setVisible(more.visible && !text.empty());
  });
}

void SentenceBox::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kBoxCorner, look.card, look.line);
}

}  // namespace homewarden::view
