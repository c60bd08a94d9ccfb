#pragma once

#include <QList>
#include <QWidget>

namespace homewarden::view {

// Puts the cards that are shown side by side, in as many columns as fit, in rows of equal height.
class CardGrid : public QWidget {
 public:
  using QWidget::QWidget;

  // A child of the grid.
  void add(QWidget* card);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void arrange();

  QList<QWidget*> cards_;
};

}  // namespace homewarden::view
