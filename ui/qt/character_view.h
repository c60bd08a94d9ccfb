#pragma once

#include <QMenu>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "ui/frm_character.h"
#include "ui/qt/character_bubble.h"
#include "ui/qt/floating_window.h"

namespace homewarden::view {

// The figure that listens. It stands at the foot of the window or where a person has dragged it,
// and steps aside when it would cover what is being used. Nothing runs while it is hidden, or when
// its pose has come to its end.
class CharacterView : public FloatingWindow {
 public:
  CharacterView(FrmCharacter& form, QWidget* window);

  // The list of commands, at a place of the desktop.
  void show_commands(const QPoint& place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void show_visible();
  void show_pose();
  void show_next_frame();
  void wait_for_next_frame();
  void resize_figure();
  void take_place();
  void step_aside();
  void stand(const QList<QPoint>& wanted);
  QList<QPoint> places() const;
  void fill_menu();
  const FigurePose* pose() const;

  FrmCharacter& form_;
  QPointer<QWidget> window_;
  CharacterBubble bubble_;
  QMenu menu_;
  QTimer frame_timer_;
  std::size_t frame_ = 0;
  std::optional<QPoint> grip_;  // where it is held
  bool dragged_ = false;
};

}  // namespace homewarden::view
