#include <QKeyEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>

#include "ui/qt/bindings.h"
#include "ui/qt/card_access.h"
#include "ui/qt/card_add.h"
#include "ui/qt/card_grid.h"
#include "ui/qt/device_card.h"
#include "ui/qt/device_page_empty.h"
#include "ui/qt/device_page_form.h"
#include "ui/qt/device_page_heading.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kFormWidth = 336;
constexpr int kGap = 16;
constexpr int kLeastBeside = 720;  // the form goes above the cards on a narrower page

// Its cards grow with the window.
class DevicePage : public Page {
 public:
  explicit DevicePage(HousePanel& panel)
      : Page(QString(), 0),
        panel_(panel),
        heading_(new RoomHeading(panel, title(), body())),
        columns_(new QBoxLayout(QBoxLayout::RightToLeft)),
        grid_(new CardGrid(body())),
        form_(new ChangeForm(panel.change, body())) {
    make_cards_accessible();
    bind(panel.lab_room, title());
    rows()->setSpacing(20);
    rows()->addWidget(heading_);
    rows()->addWidget(new EmptyRoom(panel, body()));
    for (std::size_t slot = 0; slot < HousePanel::kSlots; ++slot)
      grid_->add(new DeviceCard(panel, slot, grid_));
    grid_->add(new AddCard(panel, grid_));
    // The form comes first: above the cards, or to their right.
    columns_->setSpacing(kGap);
    columns_->addWidget(form_, 0, Qt::AlignTop);
    columns_->addWidget(grid_, 1);
    rows()->addLayout(columns_);
    add_rest();
    watch(panel.change.frm_change.visible.changed, this, [this] { form_turned(); });
    place_form();
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    place_form();
    Page::resizeEvent(event);
    const int above = kMargin + heading_->height() + rows()->spacing();
    grid_->set_page_height(event->size().height() - above - kMargin);
  }

  void keyPressEvent(QKeyEvent* event) override {
    const int page = panel_.page;
    const int last = static_cast<int>(panel_.pages.get().size()) - 1;
    if (event->key() == Qt::Key_PageDown && page < last)
      turn(page + 1);
    else if (event->key() == Qt::Key_PageUp && page > 0)
      turn(page - 1);
    else if (event->key() == Qt::Key_F2)
      panel_.mnu_renameroom.click();
    else
      Page::keyPressEvent(event);
  }

 private:
  void turn(int page) {
    panel_.page_chosen(page);
    verticalScrollBar()->setValue(0);
    grid_->focus_first();
  }

  void form_turned() {
    place_form();
    if (panel_.change.frm_change.visible) {
      changed_ = panel_.change.of_room ? std::string() : panel_.change.txt_changename.text.get();
      ensureWidgetVisible(form_);
    } else if (isVisible() && form_->had_keyboard()) {
      grid_->focus_again(slot_of(changed_));  // whoever has changed a device asks for its card
    }
  }

  // -1 when none of the cards shows it.
  int slot_of(const std::string& name) const {
    for (std::size_t slot = 0; slot < panel_.devicename.size(); ++slot)
      if (!name.empty() && panel_.devicename[slot].caption.get() == name)
        return static_cast<int>(slot);
    return -1;
  }

  void place_form() {
    const bool beside = width() >= kLeastBeside * fontMetrics().height() / 18;
    columns_->setDirection(beside ? QBoxLayout::RightToLeft : QBoxLayout::TopToBottom);
    form_->setFixedWidth(beside ? kFormWidth * std::max(18, fontMetrics().height()) / 18
                                : std::max(200, viewport()->width() - 2 * kMargin));
    const bool shares = beside && panel_.change.frm_change.visible;
    grid_->set_page_width(width() - 2 * kMargin - (shares ? form_->width() + kGap : 0));
  }

  HousePanel& panel_;
  RoomHeading* heading_;
  QBoxLayout* columns_;
  CardGrid* grid_;
  ChangeForm* form_;
  std::string changed_;  // the device's name when the form was opened
};

}  // namespace

QWidget* make_device_page(HousePanel& panel) {
  return new DevicePage(panel);
}

}  // namespace homewarden::view
