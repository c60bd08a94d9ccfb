#pragma once

#include <QList>
#include <QWidget>

namespace homewarden::view {

// Puts the cards that are shown side by side, in as many columns as fit, in rows of equal height
// that use the room there is.
class CardGrid : public QWidget {
 public:
  using QWidget::QWidget;

  // A child of the grid.
  void add(QWidget* card);

  // What the page has room for below the grid's top without scrolling.
  void set_page_height(int height);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void arrange();

  QList<QWidget*> cards_;
  int page_height_ = 0;
};

}  // namespace homewarden::view
