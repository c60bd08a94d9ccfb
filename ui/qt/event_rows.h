#pragma once

#include <QListView>

#include "ui/event_panel.h"

namespace homewarden::view {

// The events as sentences under their groups. What is selected here is the selected row of
// `ListView1`, and what is done here is done there: Enter or a double click edits, Delete and
// Ctrl+D delete, the right button or the menu key opens the menu. The row under the pointer and the
// selected one have signs to press: run, edit, delete.
class EventRows : public QListView {
  Q_OBJECT

 public:
  explicit EventRows(EventPanel& panel, QWidget* parent = nullptr);
  ~EventRows() override;

  enum class Sign { kNone, kRun, kEdit, kDelete };
  // Where a sign of a row is, in the viewport.
  QRect place_of(Sign sign, const QModelIndex& row) const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  class Model;
  class Rows;

  Sign sign_at(const QPoint& place) const;
  void press(Sign sign, const QModelIndex& row);
  void show_faces();
  void show_selected();

  EventPanel& panel_;
  Model* model_;
  Rows* rows_;
  Sign pressed_sign_ = Sign::kNone;  // what a press began on
  bool showing_ = false;             // the selection follows the control
};

}  // namespace homewarden::view
