#pragma once

#include <QWidget>
#include <vector>

#include "ui/controls.h"
#include "ui/interface_panel.h"

namespace homewarden::view {

// Over every page for as long as the interface is unplugged, with what to do about it. While none
// has been found at all it stands over the pages on which nothing works without one; Home and the
// settings say so themselves.
QWidget* make_banner(InterfacePanel& panel, const std::vector<Frame*>& needing, QWidget* parent);

}  // namespace homewarden::view
