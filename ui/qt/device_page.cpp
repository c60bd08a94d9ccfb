#include "ui/qt/bindings.h"
#include "ui/qt/card_grid.h"
#include "ui/qt/device_card.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {

QWidget* make_device_page(HousePanel& panel) {
  auto* page = new Page(QString(), 0);
  bind(panel.lab_room, page->title());
  bind(panel.lab_nodevices, page->add_text(QString()));
  auto* grid = new CardGrid(page->body());
  for (std::size_t slot = 0; slot < HousePanel::kSlots; ++slot)
    grid->add(new DeviceCard(panel, slot, grid));
  page->rows()->addWidget(grid);
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
