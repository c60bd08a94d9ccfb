#pragma once

#include <QComboBox>

#include "ui/event_panel.h"
#include "ui/qt/list_editor_page.h"

namespace homewarden::view {

// Fills the right side of the event page: the boxes, the sentence they make, the buttons. Gives the
// first box.
QComboBox* fill_event_editor(EventPanel& panel, ListEditorPage* page);

}  // namespace homewarden::view
