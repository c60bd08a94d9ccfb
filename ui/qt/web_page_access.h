#pragma once

#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

#include "ui/settings_panels.h"

namespace homewarden::view {

// A box of the page that belongs together.
class Card : public QWidget {
 public:
  explicit Card(QWidget* parent);

  QVBoxLayout* rows() { return rows_; }
  // A heading; gives its row, for what stands at its end.
  QHBoxLayout* add_title(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* rows_;
};

// A field below what is to be typed into it.
QLineEdit* add_field(TextBox& control, const char* prompt, bool secret, QBoxLayout* rows,
                     QWidget* parent);

// User and password in one form.
QWidget* make_access_card(WebPanel& panel, QWidget* parent);
// The lists of whom is trusted, which few need: shown when asked for.
QWidget* make_trust_card(WebPanel& panel, QWidget* parent);

}  // namespace homewarden::view
