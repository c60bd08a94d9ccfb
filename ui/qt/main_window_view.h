#pragma once

#include <QMainWindow>
#include <QSplitter>
#include <QStackedWidget>
#include <functional>

#include "ui/frm_main.h"

namespace homewarden::view {

class SidePane;

// The main window: shows the form and hands on what a person does with it.
class MainWindowView : public QMainWindow {
 public:
  explicit MainWindowView(FrmMain& form);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  void add_page(Frame& frame, std::function<QWidget*()> make);
  void add_menu(Menu& menu);
  void fit_side();
  void show_side_width();
  void show_pointer();
  void note_device(const QEvent& event);
  static bool lets_go(QWidget& widget, const QEvent& event);
  static bool types_letter(const QWidget& widget, const QEvent& event);
  QPoint place_of_menu() const;

  FrmMain& form_;
  QSplitter* splitter_ = nullptr;
  SidePane* side_ = nullptr;
  QStackedWidget* pages_;
  QWidget* no_page_;
  QWidget* cover_;  // lies over everything while the window is busy
  QList<QWidget*> shown_pages_;
  bool keyboard_used_ = false;  // rather than the mouse, for the last input
};

}  // namespace homewarden::view
