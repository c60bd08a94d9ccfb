#include "ui/qt/device_page_heading.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/card_menu.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kHeight = 36;
constexpr int kRing = 4;  // the cards below begin so far to the right
constexpr int kGap = 12;
constexpr int kRowGap = 12;

}  // namespace

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
  row->addWidget(make_action(panel.cmd_roomoff, LineIcon::kPower, ButtonKind::kPlain, actions_));
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

// On one line each.
int RoomHeading::words_width() const {
  int width = 0;
  for (const auto* label : words_->findChildren<QLabel*>())
    width = std::max(width, label->fontMetrics().horizontalAdvance(label->text()));
  return width + 2 * kRing;
}

// All beside each other; or the pages below; or the words above all.
void RoomHeading::lay_out() {
  const int wanted = words_width();
  const QSize actions = actions_->sizeHint();
  const bool has_pages = panel_.pages.get().size() > 1;
  const int full = has_pages ? pages_->full_width() : 0;
  pages_->set_narrow(full > width() - kRing);
  const QSize pages =
      has_pages ? QSize(std::min(full, width() - kRing), pages_->sizeHint().height()) : QSize(0, 0);
  const bool beside = wanted + actions.width() + kGap <= width();
  const bool one_row = beside && wanted + pages.width() + actions.width() + 2 * kGap <= width();
  const int words_room = beside ? width() - actions.width() - kGap : width();
  const QSize words(words_room, words_->layout()->totalHeightForWidth(words_room));
  const int first = beside ? std::max(words.height(), actions.height()) : words.height();
  words_->setGeometry(QRect(QPoint(), words));
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
