#pragma once

#include <QListWidget>
#include <QPointer>
#include <QWidget>

#include "ui/finder_panel.h"

class QLabel;
class QLineEdit;

namespace homewarden::view {

// The finder over the window: a field, and what the words in it may mean. It covers the window it
// is a child of, and follows its size; a press beside it and Escape leave it.
class FinderView : public QWidget {
 public:
  FinderView(FinderPanel& panel, QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void build();
  void lay_out();
  void show_found();
  bool take_key(int key, Qt::KeyboardModifiers modifiers);
  void choose(int position);

  FinderPanel& panel_;
  QWidget* box_;
  QLineEdit* field_;
  QListWidget* list_;
  QLabel* nothing_;
  QPointer<QWidget> former_;  // had the keyboard before
};

}  // namespace homewarden::view
