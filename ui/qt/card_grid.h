#pragma once

#include <QList>
#include <QWidget>

namespace homewarden::view {

// Puts the cards that are shown side by side, in as many columns as fit, in rows of equal height
// that use the room there is. The grid is one stop of the Tab key; arrows move within it.
class CardGrid : public QWidget {
 public:
  using QWidget::QWidget;

  // A child of the grid.
  void add(QWidget* card);

  // Give the keyboard to the first card, and to a card or, for none, the one that had it last.
  void focus_first();
  void focus_again(int card);

  // What the page has room for below the grid's top without scrolling.
  void set_page_height(int height);
  // How wide the grid is while the page has no scroll bar. The number of columns goes by it, with a
  // bar or without: a bar that took a column away would be needed because it is there, and where
  // its absence gave the column back the page would turn back and forth without an end.
  void set_page_width(int width);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void arrange();
  bool move_focus(const QWidget* from, int key);
  void make_stop(QWidget* card);

  QList<QWidget*> cards_;
  QList<QWidget*> shown_;
  QWidget* stop_ = nullptr;  // where Tab comes in
  int columns_ = 1;
  int page_height_ = 0;
  int page_width_ = 0;
};

}  // namespace homewarden::view
