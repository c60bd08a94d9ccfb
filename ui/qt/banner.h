#pragma once

#include <QWidget>

#include "ui/interface_panel.h"

namespace homewarden::view {

// Over every page for as long as the interface is unplugged, with what to do about it.
QWidget* make_banner(InterfacePanel& panel, QWidget* parent);

}  // namespace homewarden::view
