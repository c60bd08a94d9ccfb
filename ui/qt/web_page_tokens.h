#pragma once

#include <QWidget>

#include "ui/token_panel.h"

namespace homewarden::view {

// The tokens of programs: the list, and what makes one.
QWidget* make_token_card(TokenPanel& panel, QWidget* parent);

}  // namespace homewarden::view
