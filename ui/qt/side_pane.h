#pragma once

#include <QWidget>

#include "ui/frm_main.h"
#include "ui/qt/rail.h"

namespace homewarden::view {

// The left side: the program's name, the tree, and at its foot the gear and the program's menu. In
// a narrow window it is a rail, from which the same opens over the page.
class SidePane : public QWidget {
 public:
  explicit SidePane(FrmMain& form, QWidget* parent = nullptr);

  // Nothing happens when it is so already.
  void set_narrow(bool narrow);
  bool is_narrow() const { return narrow_; }
  // To the tree, or to the rail that stands for it.
  void take_focus();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget* make_brand();
  QWidget* make_foot(FrmMain& form);
  void open();

  Rail* rail_;
  QWidget* whole_;  // a pop-up while the side is narrow
  bool narrow_ = false;
};

}  // namespace homewarden::view
