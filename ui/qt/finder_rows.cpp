#include "ui/qt/finder_rows.h"

#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/device_pictures.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kRow = 52;
constexpr int kHeading = 32;
constexpr int kPicture = 36;
constexpr double kSmall = 0.86;

LineIcon sign_of(Found::Kind kind) {
  switch (kind) {
    case Found::Kind::kDevice:
    case Found::Kind::kSwitchOff:
      return LineIcon::kPower;
    case Found::Kind::kRoom:
      return LineIcon::kDoor;
    case Found::Kind::kEvent:
      return LineIcon::kClock;
    case Found::Kind::kPanel:
    case Found::Kind::kOffer:
      break;
  }
  return LineIcon::kRight;
}

}  // namespace

FinderRows::FinderRows(FinderPanel& panel, QWidget* list)
    : QStyledItemDelegate(list), panel_(panel) {}

QString FinderRows::spoken(const Found& found) {
  return qt::from_code_page(found.detail.empty() ? found.title : found.title + ", " + found.detail);
}

const Found* FinderRows::found_at(const QModelIndex& index) const {
  const auto& found = panel_.found.get();
  const auto row = static_cast<std::size_t>(index.row());
  return row < found.size() ? &found[row] : nullptr;
}

bool FinderRows::has_heading(const QModelIndex& index) const {
  const auto& found = panel_.found.get();
  const auto row = static_cast<std::size_t>(index.row());
  return row < found.size() && (row == 0 || found[row - 1].group != found[row].group);
}

void FinderRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  const Found* found = found_at(index);
  if (!found) return;
  const Look& look = look_of(option.palette);
  QRect row = option.rect;
  painter->save();
  if (has_heading(index)) {
    painter->setFont(scaled_font(option.font, kSmall, true));
    painter->setPen(look.quiet);
    painter->drawText(row.adjusted(16, 8, -16, 0), Qt::AlignLeft | Qt::AlignTop,
                      qt::from_code_page(found->group));
    row.setTop(row.top() + kHeading);
  }
  const bool chosen = index.row() == panel_.chosen;
  if (chosen || (option.state & QStyle::State_MouseOver) != 0)
    draw_box(*painter, row, kControlCorner, chosen ? look.selected : look.over, Qt::transparent);
  const QRectF place =
      centred(QRectF(row.left() + 16, row.top(), kPicture, row.height()), kPicture);
  if (found->picture.empty())
    draw_icon(*painter, sign_of(found->kind), centred(place, 20), look.quiet);
  else
    painter->drawPixmap(place.topLeft(), device_picture(found->picture, kPicture,
                                                        painter->device()->devicePixelRatioF()));
  const QRect words = row.adjusted(64, 0, -16, 0);
  const bool one_line = found->detail.empty();
  const QRect first = one_line ? words : words.adjusted(0, 6, 0, -row.height() / 2);
  const QString title = qt::from_code_page(found->title);
  const auto bold_from = static_cast<qsizetype>(found->bold_from);
  int x = first.left();
  painter->setPen(look.text);
  for (const auto& [part, bold] :
       {std::pair(title.left(bold_from), false), std::pair(title.mid(bold_from), bold_from > 0)}) {
    if (part.isEmpty()) continue;
    painter->setFont(scaled_font(option.font, 1, bold));
    const int room = std::max(0, first.right() - x);
    const QString shown = painter->fontMetrics().elidedText(part, Qt::ElideRight, room);
    painter->drawText(QRect(x, first.top(), room, first.height()), Qt::AlignLeft | Qt::AlignVCenter,
                      shown);
    x += painter->fontMetrics().horizontalAdvance(shown);
  }
  if (!one_line) {
    painter->setFont(scaled_font(option.font, kSmall, false));
    painter->setPen(look.quiet);
    const QRect second = words.adjusted(0, row.height() / 2, 0, -6);
    painter->drawText(second, Qt::AlignLeft | Qt::AlignVCenter,
                      painter->fontMetrics().elidedText(qt::from_code_page(found->detail),
                                                        Qt::ElideRight, second.width()));
  }
  painter->restore();
}

QSize FinderRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int height = std::max(kRow, option.fontMetrics.height() * 2 + 16);
  return {100, height + (has_heading(index) ? kHeading : 0)};
}

}  // namespace homewarden::view
