#include "ui/qt/segments.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <algorithm>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kHeight = 36;
constexpr int kMargin = 14;
constexpr int kTightMargin = 8;  // where there is little room
constexpr int kGap = 8;
constexpr int kBetween = 2;

// For a screen reader a radio button.
class SegmentButton : public QRadioButton {
 public:
  SegmentButton(const Segment& segment, QWidget* parent)
      : QRadioButton(QString(segment.caption).replace("&", "&&"), parent), segment_(segment) {
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  // As wide with bold words as without.
  QSize sizeHint() const override {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int icon = segment_.icon ? sign_side() + kGap : 0;
    return {metrics.horizontalAdvance(segment_.caption) + icon + 2 * kMargin,
            std::max(kHeight, metrics.height() + 14)};
  }
  QSize minimumSizeHint() const override {
    return sizeHint() - QSize(2 * (kMargin - kTightMargin), 0);
  }
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    const QColor idle = isDown() ? look.press : underMouse() ? look.over : look.field;
    draw_box(painter, rect(), kControlCorner, isChecked() ? look.selected : idle, look.edge);
    QFont words = font();
    words.setBold(isChecked());
    painter.setFont(words);
    const QColor colour = isEnabled() ? look.text : look.quiet;
    const int wide = QFontMetrics(words).horizontalAdvance(segment_.caption);
    const int icon = segment_.icon ? sign_side() + kGap : 0;
    const int left = (width() - wide - icon) / 2;
    if (segment_.icon)
      draw_icon(painter, *segment_.icon,
                centred(QRectF(left, 0, sign_side(), height()), sign_side()), colour);
    painter.setPen(colour);
    painter.drawText(QRect(left + icon, 0, wide + 2, height()), Qt::AlignVCenter, segment_.caption);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (hasFocus() && (option.state & QStyle::State_KeyboardFocusChange) != 0)
      draw_focus(painter, rect(), kControlCorner, look);
  }

 private:
  int sign_side() const { return std::max(16, fontMetrics().height() - 3); }

  Segment segment_;
};

}  // namespace

Segments::Segments(const QList<Segment>& choices, const QString& name,
                   std::function<void(int)> chosen, QWidget* parent)
    : QWidget(parent), chosen_(std::move(chosen)) {
  setAccessibleName(name);
  auto* places = new QBoxLayout(QBoxLayout::LeftToRight, this);
  places->setContentsMargins(0, 0, 0, 0);
  places->setSpacing(kBetween);
  offer(choices);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void Segments::offer(const QList<Segment>& choices) {
  for (QRadioButton* button : buttons_) {
    button->hide();
    button->deleteLater();
    layout()->removeWidget(button);
  }
  buttons_.clear();
  for (const Segment& choice : choices) {
    auto* button = new SegmentButton(choice, this);
    button->setAccessibleName(accessibleName() + ": " + choice.caption);
    button->installEventFilter(this);
    const int position = static_cast<int>(buttons_.size());
    connect(button, &QRadioButton::clicked, this, [this, position] { chosen_(position); });
    static_cast<QBoxLayout*>(layout())->addWidget(button, 1);
    button->show();
    buttons_ << button;
  }
  updateGeometry();
}

void Segments::show_choice(int position) {
  for (int i = 0; i < buttons_.size(); ++i) {
    const QSignalBlocker quiet(buttons_[i]);
    buttons_[i]->setAutoExclusive(false);  // or the last one could not be unchecked
    buttons_[i]->setChecked(i == position);
  }
  for (QRadioButton* button : buttons_) {
    button->setAutoExclusive(true);
    button->update();
  }
}

int Segments::choice() const {
  const auto found = std::find_if(buttons_.begin(), buttons_.end(),
                                  [](const QRadioButton* button) { return button->isChecked(); });
  return found == buttons_.end() ? -1 : static_cast<int>(found - buttons_.begin());
}

// As wide as all of them side by side, or they would not be that again when there is room.
QSize Segments::sizeHint() const {
  int width = -kBetween;
  for (const QRadioButton* button : buttons_) width += button->sizeHint().width() + kBetween;
  return {std::max(0, width), layout()->sizeHint().height()};
}

int Segments::least_width_of_all() const {
  int width = -kBetween;
  for (const QRadioButton* button : buttons_) width += button->minimumSizeHint().width() + kBetween;
  return std::max(0, width);
}

// As wide as the widest: they can stand one below the other.
QSize Segments::minimumSizeHint() const {
  int widest = 0;
  for (const QRadioButton* button : buttons_)
    widest = std::max(widest, button->minimumSizeHint().width());
  return {widest, layout()->minimumSize().height()};
}

bool Segments::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool back = key->key() == Qt::Key_Left || key->key() == Qt::Key_Up;
  if (back || key->key() == Qt::Key_Right || key->key() == Qt::Key_Down) {
    const auto at = buttons_.indexOf(static_cast<QRadioButton*>(watched));
    const auto next = std::clamp<qsizetype>(at + (back ? -1 : 1), 0, buttons_.size() - 1);
    choose(buttons_[next]);
    return true;
  }
  const bool is_letter = !key->text().isEmpty() && key->text().front().isLetterOrNumber() &&
                         (key->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
  return is_letter && choose_letter(key->text());
}

void Segments::choose(QRadioButton* button) {
  button->setFocus(Qt::ShortcutFocusReason);
  if (!button->isChecked()) button->click();
}

// The next one that begins with the letter, behind the one that has the focus.
bool Segments::choose_letter(const QString& letter) {
  const int count = static_cast<int>(buttons_.size());
  const int begin = std::max(0, choice());
  for (int step = 1; step <= count; ++step) {
    QRadioButton* button = buttons_[(begin + step) % count];
    if (!button->text().startsWith(letter, Qt::CaseInsensitive)) continue;
    choose(button);
    return true;
  }
  return false;
}

void Segments::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

void Segments::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) arrange();
}

// One below the other where they do not fit side by side.
void Segments::arrange() {
  auto* places = static_cast<QBoxLayout*>(layout());
  const auto direction =
      least_width_of_all() <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (direction == places->direction()) return;
  places->setDirection(direction);
  updateGeometry();
}

// The page of the panel that was open last is there before the choices are.
Segments* make_segments(ComboBox& control, const QString& name, QWidget* parent) {
  auto* segments = new Segments(
      {}, name,
      [&control](int position) {
        control.text = control.items.get()[static_cast<std::size_t>(position)];
        control.click();
      },
      parent);
  const auto show_choice = [segments, &control] {
    const auto& items = control.items.get();
    const auto found = std::find(items.begin(), items.end(), control.text.get());
    segments->show_choice(found == items.end() ? -1 : static_cast<int>(found - items.begin()));
  };
  follow(control.items, segments, [segments, show_choice](const std::vector<std::string>& items) {
    QList<Segment> choices;
    for (const std::string& item : items) choices << Segment{qt::from_code_page(item)};
    segments->offer(choices);
    show_choice();
  });
  bind_common(control, segments, name);
  watch(control.text.changed, segments, show_choice);
  return segments;
}

}  // namespace homewarden::view
