#include "ui/qt/card_menu.h"

#include <QPainter>

#include "platform/qt/text_codec.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/popup_menu.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 32;
constexpr double kIcon = 20;

QAction* add(QMenu& menu, LineIcon icon, const QString& text, const QString& keys = {}) {
  auto* action = menu.addAction(make_icon(icon), text);
  tell_keys(*action, keys);
  return action;
}

}  // namespace

void fill_card_menu(QMenu& menu, HousePanel& panel, int slot) {
  const auto order = [&menu, &panel, slot](QAction* action, CardOrder what) {
    QObject::connect(action, &QAction::triggered, &menu,
                     [&panel, slot, what] { panel.card_order(slot, what); });
  };
  order(add(menu, LineIcon::kEdit, tr("Rename"), "F2"), CardOrder::kRename);
  order(add(menu, LineIcon::kGear, tr("Change type and address")), CardOrder::kChange);
  QMenu* rooms = menu.addMenu(make_icon(LineIcon::kMove), tr("Move to"));
  for (const std::string& room : panel.other_rooms.get())
    QObject::connect(rooms->addAction(qt::from_code_page(room).replace("&", "&&")),
                     &QAction::triggered, &menu,
                     [&panel, slot, room] { panel.moved_to(slot, room); });
  rooms->setEnabled(!rooms->isEmpty());
  menu.addSeparator();
  order(add(menu, LineIcon::kTrash, tr("Delete"), "Ctrl+D"), CardOrder::kRemove);
}

void fill_room_menu(QMenu& menu, HousePanel& panel) {
  QObject::connect(add(menu, LineIcon::kEdit, tr("Rename"), "F2"), &QAction::triggered, &menu,
                   [&panel] { panel.mnu_renameroom.click(); });
  QAction* off = add(menu, LineIcon::kPower, tr("Turn room off"));
  off->setEnabled(panel.cmd_roomoff.enabled);
  QObject::connect(off, &QAction::triggered, &menu, [&panel] { panel.cmd_roomoff.click(); });
  QObject::connect(add(menu, LineIcon::kPlus, tr("Add device"), "Ctrl+N"), &QAction::triggered,
                   &menu, [&panel] { panel.cmd_adddevice.click(); });
  menu.addSeparator();
  QObject::connect(add(menu, LineIcon::kTrash, tr("Delete")), &QAction::triggered, &menu,
                   [&panel] { panel.mnu_deleteroom.click(); });
}

CardMenuButton::CardMenuButton(QWidget* card) : QToolButton(card) {
  setFocusPolicy(Qt::NoFocus);  // the menu key opens it
  setCursor(Qt::PointingHandCursor);
  resize(kSide, kSide);
}

void CardMenuButton::set_shown(bool shown) {
  if (shown_ == shown) return;
  shown_ = shown;
  update();
}

void CardMenuButton::paintEvent(QPaintEvent* /*event*/) {
  if (!shown_) return;
  QPainter painter(this);
  const Look& look = look_of(palette());
  if (underMouse() || isDown())
    draw_box(painter, rect(), kControlCorner, isDown() ? look.press : look.over, look.edge);
  draw_icon(painter, LineIcon::kMore, centred(rect(), kIcon), look.text);
}

}  // namespace homewarden::view
