#pragma once

#include <QWidget>

#include "ui/https_panel.h"

namespace homewarden::view {

// How the pages are answered over TLS, and what their certificate says.
QWidget* make_https_card(HttpsPanel& panel, QWidget* parent);

}  // namespace homewarden::view
