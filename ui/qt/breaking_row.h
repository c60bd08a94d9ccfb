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
