#include "ui/qt/character_bubble.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/free_place.h"
#include "ui/qt/house_style.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kPadding = 14;
constexpr int kGap = 6;           // to the figure
constexpr int kMostLetters = 30;  // in a line

// A screen reader says at once what an alert tells.
class BubbleAccess : public QAccessibleWidget {
 public:
  explicit BubbleAccess(QWidget* bubble) : QAccessibleWidget(bubble, QAccessible::AlertMessage) {}
};

QAccessibleInterface* make_access(const QString& /*class_name*/, QObject* object) {
  auto* bubble = dynamic_cast<CharacterBubble*>(object);
  return bubble ? new BubbleAccess(bubble) : nullptr;
}

}  // namespace

CharacterBubble::CharacterBubble(FrmCharacter& form)
    : form_(form), words_(new QLabel(this)), answers_(new QWidget(this)) {
  static const bool kInstalled = [] {
    QAccessible::installFactory(make_access);
    return true;
  }();
  static_cast<void>(kInstalled);
  setWindowTitle(tr("Homewarden says"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kPadding, kPadding - 4, kPadding, kPadding - 4);
  rows->setSpacing(8);
  words_->setWordWrap(true);
  words_->setTextFormat(Qt::PlainText);
  rows->addWidget(words_);
  auto* columns = new QHBoxLayout(answers_);
  columns->setContentsMargins(0, 0, 0, 4);
  columns->setSpacing(8);
  const std::pair<Button*, ButtonKind> buttons[] = {{&form.cmd_yes, ButtonKind::kPrimary},
                                                    {&form.cmd_no, ButtonKind::kPlain}};
  for (const auto& [control, kind] : buttons) {
    QPushButton* button = make_button(*control, answers_);
    set_kind(button, kind);
    button->setFocusPolicy(Qt::NoFocus);
    columns->addWidget(button);
  }
  columns->addStretch();
  rows->addWidget(answers_);
  follow(form.asking, this, [this](bool asking) {
    answers_->setVisible(asking);
    show_words();
  });
  watch(form.lab_bubble.caption.changed, this, [this] { show_words(); });
  watch(form.visible.changed, this, [this] { show_words(); });
  show_words();
}

void CharacterBubble::show_words() {
  const QString text = qt::from_code_page(form_.lab_bubble.caption.get());
  const bool speaks = form_.visible && !text.isEmpty();
  if (!speaks) return hide();
  const bool is_news = !isVisible() || words_->text() != text;
  words_->setText(text);
  setAccessibleName(text);
  const QFontMetrics metrics(words_->font());
  const int line = metrics.averageCharWidth() * kMostLetters;
  const QSize room = metrics.boundingRect(QRect(0, 0, line, 10000), Qt::TextWordWrap, text).size();
  words_->setFixedSize(std::max(room.width() + 2, answers_->isHidden() ? 0 : line / 2),
                       room.height() + 2);
  layout()->activate();
  resize(sizeHint());
  stand_beside(figure_, avoid_);
  show();
  if (is_news) announce();
}

void CharacterBubble::announce() {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent name(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&name);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void CharacterBubble::stand_beside(const QRect& figure, const QList<QRect>& avoid) {
  figure_ = figure;
  avoid_ = avoid;
  const QRect screen = screen_around(figure.center());
  const QSize size = this->size();
  const int middle = figure.center().x() - size.width() / 2;
  const int down = figure.top() + figure.height() / 4;
  const QPoint left(figure.left() - kGap - size.width(), down);
  const QPoint right(figure.right() + kGap, down);
  const QPoint above(middle, figure.top() - kGap - size.height());
  const QPoint below(middle, figure.bottom() + kGap);
  // What would be pushed over the figure by the edge of the screen does not fit there.
  QList<QRect> taken = avoid;
  taken << figure.adjusted(kGap + 4, kGap + 4, -kGap - 4, -kGap - 4);
  const bool at_right = figure.center().x() > screen.center().x();
  move(free_place(at_right ? QList{left, above, below, right} : QList{right, above, below, left},
                  size, taken, screen));
}

void CharacterBubble::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  if (!blends()) painter.fillRect(rect(), look.card);
  draw_box(painter, rect(), kBoxCorner, look.card, look.edge);
}

void CharacterBubble::changeEvent(QEvent* event) {
  FloatingWindow::changeEvent(event);
  if (event->type() == QEvent::FontChange && words_) show_words();
}

}  // namespace homewarden::view
