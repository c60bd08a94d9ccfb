#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <functional>

namespace homewarden::view {

// A page with a list to the left and an editor to the right. Where there is no room for both, the
// editor covers the list while it is open, with an arrow to go back.
class ListEditorPage : public QWidget {
 public:
  // `leave` is called when the person goes back to the list.
  ListEditorPage(const QString& title, std::function<void()> leave, QWidget* parent = nullptr);

  // The parent of what stands left, and its rows below the title. Lists reach out to both sides by
  // kReach, so that their words begin where the title does; everything else does not.
  static constexpr int kReach = 12;
  QWidget* list_side() { return list_body_; }
  QVBoxLayout* list_rows() { return list_rows_; }
  void add_to_list(QWidget* widget);
  QLabel* subtitle() { return subtitle_; }

  QWidget* editor_side() { return editor_body_; }
  QLabel* editor_title() { return editor_title_; }
  QVBoxLayout* editor_rows() { return editor_rows_; }
  // What stays at the foot of the editor however long that is.
  QVBoxLayout* editor_foot() { return foot_; }

  // Says whether the editor is wanted; shown beside the list it always is there.
  void open_editor(bool open);
  bool is_narrow() const { return narrow_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void build_list(const QString& title);
  void build_editor();
  void arrange();

  std::function<void()> leave_;
  QScrollArea* list_;
  QWidget* list_body_;
  QVBoxLayout* list_rows_;
  QLabel* title_;
  QLabel* subtitle_;
  QWidget* editor_;
  QWidget* editor_body_;
  QVBoxLayout* editor_rows_;
  QVBoxLayout* foot_;
  QLabel* editor_title_;
  QHBoxLayout* editor_head_;
  QPushButton* back_;
  bool open_ = false;
  bool narrow_ = false;
};

// A small label above a field.
QLabel* make_caption(const QString& text, QWidget* parent);

// How much larger than usual the desktop's text is, from 1 on for usual or smaller.
double text_scale(const QWidget& widget);

}  // namespace homewarden::view
