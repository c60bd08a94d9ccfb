#include "ui/qt/device_page_heading.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/card_menu.h"
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
constexpr int kRing = 4;  // the cards below begin so far to the right
constexpr int kGap = 12;
constexpr int kRowGap = 12;

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

RoomHeading::RoomHeading(HousePanel& panel, QWidget* title, QWidget* parent)
    : QWidget(parent),
      panel_(panel),
      words_(new QWidget(this)),
      pages_(new PageButtons(panel, this)),
      actions_(new QWidget(this)) {
  auto* words = new QVBoxLayout(words_);
  words->setContentsMargins(4, 0, 0, 0);
  words->setSpacing(0);
  words->addWidget(title);
  QLabel* count = make_quiet_label(words_);
  count->setWordWrap(false);
  bind(panel.lab_count, count);
  words->addWidget(count);

  auto* row = new QHBoxLayout(actions_);
  row->setContentsMargins(0, 0, 4, 0);
  row->setSpacing(12);
  auto* off = new QPushButton(actions_);
  bind(panel.cmd_roomoff, off);
  off->setIcon(make_icon(LineIcon::kPower));
  row->addWidget(off);
  auto* more = new QToolButton(actions_);
  more->setAutoRaise(true);
  more->setIcon(make_icon(LineIcon::kMore));
  more->setFixedSize(kHeight, kHeight);
  more->setFocusPolicy(Qt::StrongFocus);
  more->setAccessibleName(tr("Menu of the room"));
  more->setToolTip(tr("Rename this room (F2), add a device (Ctrl+N) or delete it"));
  connect(more, &QToolButton::clicked, this, [&panel, more] {
    auto* menu = new QMenu(more);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill_room_menu(*menu, panel);
    menu->popup(more->mapToGlobal(QPoint(0, more->height())));
  });
  row->addWidget(more);

  for (Property<std::string>* text : {&panel.lab_room.caption, &panel.lab_count.caption})
    watch(text->changed, this, [this] { lay_out(); });
  watch(panel.pages.changed, this, [this] { lay_out(); });
  watch(panel.page.changed, this, [this] { lay_out(); });
}

void RoomHeading::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  lay_out();
}

// All beside each other; or the pages below; or the words above all.
void RoomHeading::lay_out() {
  const QSize words = words_->sizeHint();
  const QSize actions = actions_->sizeHint();
  const bool has_pages = panel_.pages.get().size() > 1;
  const int full = has_pages ? pages_->full_width() : 0;
  pages_->set_narrow(full > width() - kRing);
  const QSize pages =
      has_pages ? QSize(std::min(full, width() - kRing), pages_->sizeHint().height()) : QSize(0, 0);
  const bool beside = words.width() + actions.width() + kGap <= width();
  const bool one_row =
      beside && words.width() + pages.width() + actions.width() + 2 * kGap <= width();
  const int first = beside ? std::max(words.height(), actions.height()) : words.height();
  words_->setGeometry(0, 0, beside ? width() - actions.width() - kGap : width(), words.height());
  int bottom = first;
  if (beside) {
    actions_->setGeometry(width() - actions.width(), (first - actions.height()) / 2,
                          actions.width(), actions.height());
  } else {
    actions_->setGeometry(kRing, bottom + kRowGap, std::min(actions.width(), width() - kRing),
                          actions.height());
    bottom += kRowGap + actions.height();
  }
  if (one_row) {
    words_->resize(width() - actions.width() - pages.width() - 2 * kGap, words.height());
    pages_->setGeometry(width() - actions.width() - kGap - pages.width(),
                        (first - pages.height()) / 2, pages.width(), pages.height());
  } else if (has_pages) {
    const int narrow = std::min(pages.width(), pages_->sizeHint().width());
    pages_->setGeometry(kRing, bottom + kRowGap, narrow, pages.height());
    bottom += kRowGap + pages.height();
  }
  if (minimumHeight() != bottom) setFixedHeight(bottom);
}

}  // namespace homewarden::view
