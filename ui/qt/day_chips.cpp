#include "ui/qt/day_chips.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QResizeEvent>
#include <QStyleOptionButton>
#include <algorithm>
#include <string_view>
#include <utility>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 40;
constexpr int kLeastSide = 34;  // where seven would not fit otherwise
constexpr int kGap = 4;

class DayChip : public QCheckBox {
 public:
  explicit DayChip(QWidget* parent) : QCheckBox(parent) { setAttribute(Qt::WA_Hover); }

  QSize sizeHint() const override {
    const int side = std::max(kSide, fontMetrics().height() + 16);
    return {side, side};
  }
  QSize minimumSizeHint() const override {
    const int side = std::max(kLeastSide, fontMetrics().height() + 10);
    return {side, side};
  }
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    const QRectF round = centred(rect(), std::min(width(), height()));
    const QColor idle = isDown() ? look.press : underMouse() ? look.over : look.field;
    draw_box(painter, round, round.width() / 2, isChecked() ? look.primary : idle,
             isChecked() ? look.primary : look.edge);
    QFont words = font();
    words.setBold(isChecked());
    painter.setFont(words);
    painter.setPen(isChecked() ? QColor(Qt::white) : look.text);
    painter.drawText(round, Qt::AlignCenter, text());
    QStyleOptionButton option;
    initStyleOption(&option);
    if (hasFocus() && (option.state & QStyle::State_KeyboardFocusChange) != 0)
      draw_focus(painter, round, round.width() / 2, look);
  }
};

class DayChips : public QWidget {
 public:
  explicit DayChips(std::array<CheckBox, 7>& days, QWidget* parent)
      : QWidget(parent), places_(new QGridLayout(this)) {
    places_->setContentsMargins(0, 0, 0, 0);
    places_->setSpacing(kGap);
    for (CheckBox& day : days) {
      auto* chip = new DayChip(this);
      bind(day, chip, QString::fromStdString(day.tool_tip));
      chips_ << chip;
    }
    arrange();
  }

  QSize minimumSizeHint() const override {
    return {4 * (chips_.front()->minimumSizeHint().width() + kGap),
            places_->minimumSize().height()};
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    arrange();
  }
  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) arrange();
  }

 private:
  void arrange() {
    const int side = chips_.front()->minimumSizeHint().width() + kGap;
    const int columns = width() + kGap >= 7 * side ? 7 : 4;
    if (columns == columns_) return;
    columns_ = columns;
    for (int day = 0; day < chips_.size(); ++day)
      places_->addWidget(chips_[day], day / columns, day % columns);
  }

  QGridLayout* places_;
  QList<DayChip*> chips_;
  int columns_ = 0;
};

// No wider than its words: three of them stand beside a caption.
class Preset : public QPushButton {
 public:
  Preset(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
    set_kind(this, ButtonKind::kFlat);
  }
  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(text()) + 14, std::max(32, fontMetrics().height() + 8)};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace

QWidget* make_day_chips(std::array<CheckBox, 7>& days, QWidget* parent) {
  return new DayChips(days, parent);
}

QWidget* make_day_presets(std::array<CheckBox, 7>& days, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* places = new QHBoxLayout(row);
  places->setContentsMargins(0, 0, 0, 0);
  places->setSpacing(0);
  const std::pair<const char*, std::string_view> presets[] = {
      {"All", "1111111"}, {"Weekdays", "1111100"}, {"Weekend", "0000011"}};
  for (const auto& [caption, pattern] : presets) {
    auto* button = new Preset(tr(caption), row);
    QObject::connect(button, &QPushButton::clicked, row, [&days, pattern = pattern] {
      for (std::size_t day = 0; day < days.size(); ++day) days[day].checked = pattern[day] == '1';
    });
    places->addWidget(button);
  }
  return row;
}

}  // namespace homewarden::view
