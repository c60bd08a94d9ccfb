#pragma once

#include <QAbstractButton>

class QPainter;

namespace homewarden::view {

struct Look;

inline constexpr int kSideRow = 36;  // its height, at the usual size of text

// What lies below a button of the side by its state, and the ring when it has the focus.
void draw_side_button(QPainter& painter, const QAbstractButton& button, const Look& look);

// A row at the foot of the tree, which looks like a row of the tree.
class FootRow : public QAbstractButton {
 public:
  explicit FootRow(QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// Looks like a field; a press opens the finder.
class FindButton : public QAbstractButton {
 public:
  explicit FindButton(QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace homewarden::view
