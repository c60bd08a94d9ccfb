#pragma once

#include <QAbstractButton>
#include <optional>

#include "ui/controls.h"
#include "ui/qt/line_icons.h"

namespace homewarden::view {

// A text that leads on. It wraps where the room ends; its sign is in the words' colour.
class LinkButton : public QAbstractButton {
 public:
  // `factor` of the desktop's size.
  LinkButton(Label& control, double factor, std::optional<LineIcon> icon, QWidget* parent);

  // In the colour of what went wrong.
  void set_failed() { failed_ = true; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int words_left() const;
  QFont words_font() const;

  double factor_;
  std::optional<LineIcon> icon_;
  bool failed_ = false;
};

}  // namespace homewarden::view
