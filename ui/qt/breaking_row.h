#pragma once

#include <QHBoxLayout>
#include <QWidget>

namespace homewarden::view {

// Two groups of fields, one behind the other; one below the other where there is no room for that.
class BreakingRow : public QWidget {
 public:
  explicit BreakingRow(QWidget* parent = nullptr);

  QHBoxLayout* first() { return first_; }
  QHBoxLayout* second() { return second_; }
  // The room that is left goes to the first group instead of the second.
  void let_first_grow();

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void arrange();

  QBoxLayout* groups_;
  QHBoxLayout* first_;
  QHBoxLayout* second_;
};

}  // namespace homewarden::view
