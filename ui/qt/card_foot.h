#pragma once

#include <QLabel>
#include <QPushButton>

#include "ui/house_panel.h"

namespace homewarden::view {

// The line at the foot of a device's card: that a press waits or is being sent, or else that the
// last one was not sent, as a link that sends it again. It takes the same room when it is empty.
class CardFoot : public QWidget {
 public:
  CardFoot(Property<CardState>& state, Label& not_sent, QWidget* parent);

  CardState state() const { return state_; }
  // Whether the link is what it says now.
  bool warns() const { return state_ == CardState::kIdle && not_sent_.visible; }
  // What it says, for a screen reader; empty when it says nothing.
  QString words() const;
  // Where the focus goes when the link that has it disappears.
  void set_neighbour(QWidget* neighbour) { neighbour_ = neighbour; }

  // The colour of what was not sent, on the card's ground.
  static QColor warning_colour(const QPalette& palette);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void refresh();
  void recolour();

  Property<CardState>& state_;
  Label& not_sent_;
  QLabel* text_;
  QPushButton* link_;
  QWidget* neighbour_ = nullptr;
};

}  // namespace homewarden::view
