#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace homewarden::view {

// A text that the program shows, in the language of the desktop.
inline QString tr(const char* text) {
  return QObject::tr(text);
}

// A panel of the right side: a title, and rows below it that do not grow wider than is pleasant to
// read. It scrolls when the window is small.
class Page : public QScrollArea {
 public:
  static constexpr int kMargin = 32;
  static constexpr int kTextWidth = 720;
  static constexpr int kHeadingGap = 10;  // above a heading, beside the distance of all rows

  // `max_width` 0: as wide as the window.
  explicit Page(const QString& title, int max_width = kTextWidth, QWidget* parent = nullptr);

  QVBoxLayout* rows() { return rows_; }
  QWidget* body() { return body_; }
  QLabel* title() { return title_; }
  // A quiet line below the title; hidden until it is shown.
  QLabel* subtitle() { return subtitle_; }
  void show_subtitle();
  // Beside the title, at the right end.
  void add_action(QWidget* action);

  // A paragraph, wrapped. Quiet text explains; the other says something.
  QLabel* add_text(const QString& text, bool quiet = true);
  QLabel* add_heading(const QString& text);
  // Rows of a label and a field, the labels aligned.
  QFormLayout* add_form();
  // Takes the room that is left, below everything.
  void add_rest() { rows_->addStretch(1); }

 protected:
  // What fits only without the scroll bar is laid out once, not until it fits.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool fitting_ = false;
  QWidget* body_;
  QVBoxLayout* rows_;
  QHBoxLayout* head_;
  QLabel* title_;
  QLabel* subtitle_;
};

QLabel* make_heading(const QString& text, QWidget* parent);
// A wrapped text that explains; stays readable when the desktop turns dark or light.
QLabel* make_quiet_label(QWidget* parent);

// The colour of text that explains, on the widget's background.
QColor quiet_text_colour(const QPalette& palette);

}  // namespace homewarden::view
