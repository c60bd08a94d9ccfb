#pragma once

#include <QVBoxLayout>
#include <QWidget>

namespace homewarden::view {

// A card-coloured surface with round corners that holds rows.
class Box : public QWidget {
 public:
  enum class Kind { kPlain, kFailed };

  explicit Box(QWidget* parent, int padding = 20, Kind kind = Kind::kPlain);
  QVBoxLayout* rows() { return rows_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVBoxLayout* rows_;
  Kind kind_;
};

// A line that separates.
class Rule : public QWidget {
 public:
  explicit Rule(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A small round light.
class Dot : public QWidget {
 public:
  enum class Tone { kOk, kFailed, kUnderWay, kOn, kOff };

  explicit Dot(QWidget* parent);
  void set_tone(Tone tone);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Tone tone_ = Tone::kOff;
};

}  // namespace homewarden::view
