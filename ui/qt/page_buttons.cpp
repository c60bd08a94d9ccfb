#include "ui/qt/page_buttons.h"

#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>

#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kHeight = 36;
constexpr int kSide = 14;
constexpr int kBadgeGap = 8;
constexpr int kShownPages = 4;

}  // namespace

PageButton::PageButton(HousePanel& panel, int page, QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
  connect(this, &QAbstractButton::clicked, this, [this, &panel, page] {
    setChecked(panel.page == page);  // it is what the slots show
    panel.page_chosen(page);
  });
}

QString PageButton::badge() const {
  return on_ > 0 ? QString::number(on_) : QString();
}

QSize PageButton::sizeHint() const {
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  int width = metrics.horizontalAdvance(text()) + 2 * kSide;
  if (on_ > 0)
    width += kBadgeGap + std::max(metrics.height() + 2, metrics.horizontalAdvance(badge()) + 12);
  return {width, std::max(kHeight, metrics.height() + 16)};
}

void PageButton::show_page(const RoomPage& page) {
  setText(page.first == page.last ? QString::number(page.first)
                                  : tr("%1 to %2").arg(page.first).arg(page.last));
  on_ = page.on;
  setAccessibleName(tr("Devices %1").arg(text()));
  setAccessibleDescription(page.on == 0 ? tr("all off") : tr("%1 on").arg(page.on));
  updateGeometry();
  update();
}

void PageButton::set_ends(bool first, bool last) {
  first_ = first;
  last_ = last;
  update();
}

void PageButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  // Of a box that goes on in the next button only the ends are round.
  const double corner = kControlCorner;
  QRectF box = QRectF(rect());
  painter.save();
  painter.setClipRect(rect());
  if (!first_) box.setLeft(box.left() - 2 * corner);
  if (!last_) box.setRight(box.right() + 2 * corner);
  const QColor ground = isDown()       ? look.press
                        : isChecked()  ? look.selected
                        : underMouse() ? look.over
                                       : look.card;
  draw_box(painter, box, corner, ground, look.edge);
  painter.restore();
  if (!first_) painter.fillRect(QRectF(0, 1, 1, height() - 2), look.line);
  QFont words = font();
  words.setBold(isChecked());
  painter.setFont(words);
  painter.setPen(look.text);
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const int round = metrics.height() + 2;
  const int badge_width = on_ > 0 ? std::max(round, metrics.horizontalAdvance(badge()) + 12) : 0;
  const int right = kSide + (on_ > 0 ? badge_width + kBadgeGap : 0);
  painter.drawText(rect().adjusted(kSide, 0, -right, 0), Qt::AlignCenter, text());
  if (on_ > 0) {
    const QRectF place(width() - kSide - badge_width, (height() - round) / 2.0, badge_width, round);
    draw_box(painter, place, round / 2.0, look.amber, look.line_on);
    painter.setFont(bold);
    painter.setPen(look.ink);
    painter.drawText(place, Qt::AlignCenter, badge());
  }
  if (hasFocus()) draw_focus(painter, rect(), corner, look);
}

PageButtons::PageButtons(HousePanel& panel, QWidget* parent)
    : QWidget(parent),
      panel_(panel),
      row_(new QHBoxLayout(this)),
      back_(new QPushButton(this)),
      on_(new QPushButton(this)) {
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(0);
  const auto arrow = [this](QPushButton* button, LineIcon icon, const QString& name, int by) {
    set_kind(button, ButtonKind::kGhost);
    button->setIcon(make_icon(icon));
    button->setAccessibleName(name);
    button->setToolTip(name);
    row_->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, by] { turn(by); });
  };
  arrow(back_, LineIcon::kLeft, tr("Previous page"), -1);
  arrow(on_, LineIcon::kRight, tr("Next page"), 1);
  follow(panel.pages, this, [this](const auto&) { show_pages(); });
  watch(panel.page.changed, this, [this] { show_pages(); });
}

void PageButtons::turn(int by) {
  const int page = panel_.page + by;
  if (page >= 0 && page < static_cast<int>(panel_.pages.get().size())) panel_.page_chosen(page);
}

void PageButtons::show_pages() {
  const auto& pages = panel_.pages.get();
  const int count = static_cast<int>(pages.size());
  while (buttons_.size() < count) {
    buttons_ << new PageButton(panel_, static_cast<int>(buttons_.size()), this);
    row_->insertWidget(row_->count() - 1, buttons_.back());
  }
  const int shown = narrow_ ? 1 : kShownPages;
  const int first = std::clamp(panel_.page - shown / 2, 0, std::max(0, count - shown));
  const int last = std::min(count, first + shown) - 1;
  for (int page = 0; page < buttons_.size(); ++page) {
    PageButton& button = *buttons_[page];
    if (page < count) button.show_page(pages[static_cast<std::size_t>(page)]);
    button.setChecked(page == panel_.page);
    button.set_ends(page == first, page == last);
    button.setVisible(page >= first && page <= last);
  }
  for (QPushButton* arrow : {back_, on_}) arrow->setVisible(count > shown);
  back_->setEnabled(panel_.page > 0);
  on_->setEnabled(panel_.page < count - 1);
  setVisible(count > 1);
}

void PageButtons::set_narrow(bool narrow) {
  if (narrow_ == narrow) return;
  narrow_ = narrow;
  show_pages();
}

int PageButtons::full_width() const {
  const int count = static_cast<int>(panel_.pages.get().size());
  int width = count > kShownPages ? 2 * back_->sizeHint().width() : 0;
  int widest = 0;
  for (int page = 0; page < count; ++page)
    widest = std::max(widest, buttons_[page]->sizeHint().width());
  return width + std::min(count, kShownPages) * widest;
}

}  // namespace homewarden::view
