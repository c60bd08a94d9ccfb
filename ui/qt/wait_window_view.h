#pragma once

#include <QWidget>

#include "ui/frm_wait.h"

namespace homewarden::view {

// The small window of start-up and shutdown.
class WaitWindowView : public QWidget {
 public:
  explicit WaitWindowView(FrmWait& form);

 protected:
  void closeEvent(QCloseEvent* event) override;
};

}  // namespace homewarden::view
