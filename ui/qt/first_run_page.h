#pragma once

#include <QWidget>

#include "ui/first_run_panel.h"
#include "ui/home_panel.h"
#include "ui/house_panel.h"
#include "ui/interface_panel.h"

namespace homewarden::view {

// The home page of a house without rooms: three steps to a lamp that switches.
QWidget* make_first_run_page(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home,
                             AddRoomPanel& add_room, AddDevicePanel& add_device);

// The house, its interface and the power line between them.
class FirstRunPicture : public QWidget {
 public:
  explicit FirstRunPicture(QWidget* parent);
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace homewarden::view
