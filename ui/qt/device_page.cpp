#include <QResizeEvent>

#include "ui/qt/bindings.h"
#include "ui/qt/card_grid.h"
#include "ui/qt/device_card.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {
namespace {

// Its cards grow with the window.
class DevicePage : public Page {
 public:
  explicit DevicePage(HousePanel& panel) : Page(QString(), 0), grid_(new CardGrid(body())) {
    bind(panel.lab_room, title());
    bind(panel.lab_nodevices, add_text(QString()));
    for (std::size_t slot = 0; slot < HousePanel::kSlots; ++slot)
      grid_->add(new DeviceCard(panel, slot, grid_));
    rows()->addWidget(grid_);
    add_rest();
    // The cards begin below the title's words, their rings reach out to the left.
    title()->setIndent(DeviceCard::kRing);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    Page::resizeEvent(event);
    const int above = kMargin + title()->sizeHint().height() + rows()->spacing();
    grid_->set_page_height(event->size().height() - above - kMargin);
  }

 private:
  CardGrid* grid_;
};

}  // namespace

QWidget* make_device_page(HousePanel& panel) {
  return new DevicePage(panel);
}

}  // namespace homewarden::view
