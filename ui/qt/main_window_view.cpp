#include "ui/qt/main_window_view.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "platform/qt/text_codec.h"
#include "ui/qt/pages.h"
#include "ui/qt/status_bar_view.h"
#include "ui/qt/tree_pane.h"
#include "ui/qt/watch.h"

// The icons lie in a static library, which the linker would leave out unasked.
static void load_icons() {
  Q_INIT_RESOURCE(icons);
}

namespace homewarden {
namespace {

constexpr float kTwipsPerPixel = 15;

int to_pixels(float twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}
float to_twips(int pixels) {
  return static_cast<float>(pixels) * kTwipsPerPixel;
}

bool is_input(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      return true;
    default:
      return false;
  }
}

}  // namespace

MainWindowView::MainWindowView(FrmMain& form)
    : form_(form), pages_(new QStackedWidget), no_page_(new QWidget), cover_(new QWidget(this)) {
  load_icons();
  setMinimumSize(760, 520);
  cover_->setCursor(Qt::BusyCursor);
  cover_->hide();
  resize(to_pixels(form.width), to_pixels(form.height));
  build();
  bind_window();
  qApp->installEventFilter(this);
}

void MainWindowView::build() {
  pages_->addWidget(no_page_);
  add_page(form_.frm_home, make_home_page);
  add_page(form_.frm_devices, make_device_page);
  add_page(form_.frm_addroom, make_add_room_page);
  add_page(form_.frm_adddevice, make_add_device_page);
  add_page(form_.frm_event, make_event_page);
  add_page(form_.frm_macros, make_macro_page);
  add_page(form_.Frame4, make_web_page);
  add_page(form_.Frame5, make_profiles_page);
  add_page(form_.Frame3, make_speech_page);

  auto* splitter = new QSplitter;
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(1);
  splitter->addWidget(build_side());
  splitter->addWidget(pages_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({240, 720});
  setCentralWidget(splitter);
  setStatusBar(new StatusBarView(form_.Statusbar, this));
  for (Menu* menu : {&form_.mnuPopup, &form_.mnuPopup1, &form_.sspp3}) add_menu(*menu);
}

QWidget* MainWindowView::build_side() {
  auto* side = new QWidget;
  side->setAutoFillBackground(true);
  side->setBackgroundRole(QPalette::Base);
  auto* rows = new QVBoxLayout(side);
  rows->setContentsMargins(8, 12, 4, 8);
  rows->addWidget(new TreePane(form_.Tree, side), 1);
  auto* menu = new QToolButton(side);
  menu->setAutoRaise(true);
  menu->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  menu->setIcon(QIcon(":/icons/homewarden.png"));
  menu->setIconSize(QSize(22, 22));
  menu->setText(tr("&Menu"));
  menu->setToolTip(tr("About Homewarden, Exit"));
  menu->setAccessibleName(tr("Menu"));
  connect(menu, &QToolButton::clicked, this, [this] { form_.sspp3.popped_up(); });
  rows->addWidget(menu);
  return side;
}

// A page is built when it is first shown: most people open few of them in one sitting.
void MainWindowView::add_page(Frame& frame, QWidget* (*make)(FrmMain&)) {
  auto* place = new QWidget;
  auto* rows = new QVBoxLayout(place);
  rows->setContentsMargins(0, 0, 0, 0);
  pages_->addWidget(place);
  follow(frame.visible, this, [this, place, rows, make](bool visible) {
    shown_pages_.removeOne(place);
    if (visible) {
      if (rows->isEmpty()) rows->addWidget(make(form_));
      shown_pages_ << place;
    }
    // Of several that are visible the one shown last; none at all leaves the place empty.
    pages_->setCurrentWidget(shown_pages_.isEmpty() ? no_page_ : shown_pages_.last());
  });
}

void MainWindowView::add_menu(Menu& menu) {
  auto* shown = new QMenu(from_code_page(menu.caption), this);
  for (MenuEntry* entry : menu.entries) {
    if (entry->caption == "-")
      shown->addSeparator();
    else
      connect(shown->addAction(from_code_page(entry->caption)), &QAction::triggered, this,
              [entry] { entry->click(); });
  }
  watch(menu.popped_up, this, [this, shown] { shown->popup(place_of_menu()); });
}

// Where the pointer is; below what has the focus when the keyboard was used last.
QPoint MainWindowView::place_of_menu() const {
  const QWidget* focus = QApplication::focusWidget();
  if (!keyboard_used_ || !focus || focus->window() != this) return QCursor::pos();
  if (const auto* list = qobject_cast<const QAbstractItemView*>(focus))
    return list->viewport()->mapToGlobal(list->visualRect(list->currentIndex()).bottomLeft());
  return focus->mapToGlobal(focus->rect().bottomLeft());
}

// Widgets with a pointer of their own would keep it while the window is busy.
void MainWindowView::show_pointer() {
  const bool busy = form_.mouse_pointer == MousePointer::kHourglass;
  if (busy)
    setCursor(Qt::BusyCursor);
  else
    unsetCursor();
  cover_->setGeometry(rect());
  cover_->setVisible(busy && !form_.enabled);
  cover_->raise();
}

void MainWindowView::bind_window() {
  follow(form_.caption, this,
         [this](const std::string& text) { setWindowTitle(from_code_page(text)); });
  follow(form_.left, this, [this](float) { place(); });
  watch(form_.top.changed, this, [this] { place(); });
  watch(form_.state.changed, this, [this] { show_state(form_.state); });
  watch(form_.topmost.changed, this, [this] {
    // Changing the flag of a window hides it; it comes back where it was.
    const bool was_visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, form_.topmost);
    if (was_visible) show();
  });
  watch(form_.raised, this, [this] {
    raise();
    activateWindow();
  });
  watch(form_.mouse_pointer.changed, this, [this] { show_pointer(); });
  watch(form_.enabled.changed, this, [this] { show_pointer(); });
  follow(form_.visible, this, [this](bool visible) { setVisible(visible); });
}

void MainWindowView::place() {
  if (placing_) return;
  placing_ = true;
  move(to_pixels(form_.left), to_pixels(form_.top));
  placing_ = false;
}

void MainWindowView::show_state(WindowState state) {
  const bool minimized = state == WindowState::kMinimized;
  if (minimized == isMinimized()) return;
  setWindowState(minimized ? windowState() | Qt::WindowMinimized
                           : windowState() & ~Qt::WindowMinimized);
}

void MainWindowView::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program closes the window when it has done its last work
  form_.close_requested();
}

void MainWindowView::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // Only a window that is shown can have been minimised by the person.
  if (event->type() == QEvent::WindowStateChange && isVisible())
    form_.state = isMinimized() ? WindowState::kMinimized : WindowState::kNormal;
}

void MainWindowView::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  if (placing_ || !isVisible() || isMinimized()) return;
  placing_ = true;  // the form follows the window, not the other way round
  form_.left = to_twips(pos().x());
  form_.top = to_twips(pos().y());
  placing_ = false;
}

// A window that is disabled takes no input but looks as usual: it is only for a moment, and greying
// everything would flicker. Other windows, such as questions, are not concerned.
bool MainWindowView::eventFilter(QObject* watched, QEvent* event) {
  if (!is_input(event->type())) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != this) return false;
  note_device(*event);
  return !form_.enabled;
}

void MainWindowView::note_device(const QEvent& event) {
  if (event.type() == QEvent::KeyPress) keyboard_used_ = true;
  if (event.type() == QEvent::MouseButtonPress) keyboard_used_ = false;
  if (event.type() == QEvent::ContextMenu)
    keyboard_used_ =
        static_cast<const QContextMenuEvent&>(event).reason() == QContextMenuEvent::Keyboard;
}

void MainWindowView::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  cover_->setGeometry(rect());
}

}  // namespace homewarden
