#include "ui/qt/bindings.h"
#include "ui/qt/card_grid.h"
#include "ui/qt/device_card.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden {

QWidget* make_device_page(FrmMain& form) {
  auto* page = new Page(QString(), 0);
  bind(form.lab_room, page->title());
  bind(form.lab_nodevices, page->add_text(QString()));
  auto* grid = new CardGrid(page->body());
  for (std::size_t slot = 0; slot < FrmMain::kSlots; ++slot)
    grid->add(new DeviceCard(form, slot, grid));
  page->rows()->addWidget(grid);
  page->add_rest();
  return page;
}

}  // namespace homewarden
