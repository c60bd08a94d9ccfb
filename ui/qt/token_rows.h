#pragma once

#include <QList>
#include <QVBoxLayout>
#include <QWidget>

#include "ui/token_panel.h"

namespace homewarden::view {

class TokenRow;

// The tokens that there are, each with a button that revokes it.
class TokenRows : public QWidget {
 public:
  TokenRows(TokenPanel& panel, QWidget* parent);

 private:
  void show_faces();

  TokenPanel& panel_;
  QVBoxLayout* places_;
  QWidget* nothing_;  // says that there are none
  QList<TokenRow*> rows_;
};

}  // namespace homewarden::view
