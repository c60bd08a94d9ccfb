#include "ui/qt/empty_list.h"

#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kDrawing = 88;
constexpr int kWords = 420;

class Drawing : public QWidget {
 public:
  Drawing(LineIcon icon, QWidget* parent) : QWidget(parent), icon_(icon) {
    setFixedSize(kDrawing, kDrawing);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    draw_box(painter, rect(), kDrawing / 2.0, look.card, look.line);
    draw_icon(painter, icon_, centred(rect(), kDrawing / 2.0), look.quiet);
  }

 private:
  LineIcon icon_;
};

}  // namespace

EmptyList::EmptyList(LineIcon drawing, Label& sentence, const QString& button,
                     const std::function<void()>& pressed, QWidget* parent)
    : QWidget(parent) {
  auto* rows = new QVBoxLayout(this);
  rows->setSpacing(16);
  rows->addStretch(1);
  rows->addWidget(new Drawing(drawing, this), 0, Qt::AlignHCenter);
  auto* words = new SizedLabel(1.0, false, SizedLabel::kQuiet, this);
  words->setAlignment(Qt::AlignHCenter);
  words->setMaximumWidth(kWords);
  bind(sentence, words);
  auto* middle = new QHBoxLayout;
  middle->addStretch(1);
  middle->addWidget(words, 8);
  middle->addStretch(1);
  rows->addLayout(middle);
  if (!button.isEmpty()) {
    auto* begin = new QPushButton(button, this);
    set_kind(begin, ButtonKind::kPlain);
    connect(begin, &QPushButton::clicked, this, [pressed] { pressed(); });
    rows->addWidget(begin, 0, Qt::AlignHCenter);
  }
  rows->addStretch(2);
  follow(sentence.visible, this, [this](bool visible) { setVisible(visible); });
}

}  // namespace homewarden::view
