#pragma once

#include <QAbstractButton>

#include "ui/home_panel.h"

namespace homewarden::view {

// A device on the home page. The whole chip is the target.
class ChipButton : public QAbstractButton {
 public:
  explicit ChipButton(QWidget* parent);
  void show_chip(const HomeChip& chip);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override {}  // what is recorded counts

 private:
  QString second_line() const;
  HomeChip chip_;
};

// A room with a dot for each device.
class TileButton : public QAbstractButton {
 public:
  explicit TileButton(QWidget* parent);
  void show_tile(const RoomTile& tile);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  RoomTile tile_;
};

// The last tile: adds a room.
class AddTile : public QAbstractButton {
 public:
  explicit AddTile(const QString& text, QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace homewarden::view
