#pragma once

#include <QAbstractButton>
#include <functional>

#include "ui/frm_main.h"
#include "ui/qt/line_icons.h"

namespace homewarden::view {

// A sign on the rail, with a badge when its number is not 0.
class RailButton : public QAbstractButton {
 public:
  RailButton(LineIcon icon, const QString& name, QWidget* parent);
  void set_count(int count);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override {}  // it follows what is shown

 private:
  LineIcon icon_;
  int count_ = 0;
};

// The side of a narrow window: a sign for each fixed node, one that opens the tree, the gear and
// the program's menu.
class Rail : public QWidget {
 public:
  static constexpr int kWidth = 56;

  Rail(FrmMain& form, std::function<void()> open_tree, QWidget* parent);

 private:
  void show_selected();
  void show_count();

  FrmMain& form_;
  QList<RailButton*> fixed_;
  RailButton* rooms_;
  RailButton* gear_;
};

}  // namespace homewarden::view
