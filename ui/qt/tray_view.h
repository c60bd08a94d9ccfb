#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <memory>

#include "ui/frm_systray.h"
#include "ui/program_menu.h"
#include "ui/qt/bus_area.h"
#include "ui/qt/embedding_area.h"

namespace homewarden::view {

// The icon in the notification area of the desktop, as soon as there is one.
class TrayView : public QObject {
 public:
  // `menu` outlives the view.
  TrayView(FrmSysTray& form, const ProgramMenu& menu);

 private:
  // The toolkit settles at its first icon for the kind of area that is there, for good.
  enum class Kind { kNone, kBus, kEmbedding, kOther };

  bool has_area();
  Kind find_kind() const;
  void look();
  void show_icon();
  void show_texts();
  void tell_click(QSystemTrayIcon::ActivationReason reason);

  FrmSysTray& form_;
  BusArea bus_;
  EmbeddingArea embedding_;
  QMenu menu_;  // for panels that draw it themselves
  Kind kind_ = Kind::kNone;
  std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace homewarden::view
