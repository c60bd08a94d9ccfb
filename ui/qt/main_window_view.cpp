#include "ui/qt/main_window_view.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/qt/banner.h"
#include "ui/qt/button_access.h"
#include "ui/qt/finder_view.h"
#include "ui/qt/message_list_view.h"
#include "ui/qt/message_toast.h"
#include "ui/qt/pages.h"
#include "ui/qt/popup_menu.h"
#include "ui/qt/side_pane.h"
#include "ui/qt/status_bar_view.h"
#include "ui/qt/watch.h"
#include "ui/qt/window_frame.h"
#include "ui/qt/window_keys.h"

// The pictures lie in a static library, which the linker would leave out unasked.
static void load_pictures() {
  Q_INIT_RESOURCE(icons);
  Q_INIT_RESOURCE(pictures);
}

namespace homewarden::view {
namespace {

// What a small screen with large text has room for; pages scroll.
constexpr int kLeastWidth = 440;
constexpr int kLeastHeight = 340;

// Below this width the side is a rail. Counted at letters of kUsualLetter pixels: large text has
// the layout of a smaller window.
constexpr int kNarrow = 960;
constexpr int kUsualLetter = 14;

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
  load_pictures();
  make_buttons_accessible();
  setMinimumSize(kLeastWidth, kLeastHeight);
  cover_->setCursor(Qt::BusyCursor);
  cover_->hide();
  build();
  watch(form.mouse_pointer.changed, this, [this] { show_pointer(); });
  watch(form.enabled.changed, this, [this] { show_pointer(); });
  new WindowFrame(form, this);
  qApp->installEventFilter(this);
}

void MainWindowView::build() {
  pages_->addWidget(no_page_);
  add_page(form_.frm_home, [this] { return make_home_page(form_); });
  add_page(form_.frm_devices, [this] { return make_device_page(form_); });
  add_page(form_.frm_addroom, [this] { return make_add_room_page(form_); });
  add_page(form_.frm_adddevice, [this] { return make_add_device_page(form_); });
  add_page(form_.frm_event, [this] { return make_event_page(form_); });
  add_page(form_.frm_macros, [this] { return make_macro_page(form_); });
  add_page(form_.Frame4, [this] { return make_web_page(form_); });
  add_page(form_.Frame5, [this] { return make_profiles_page(form_); });
  add_page(form_.Frame3, [this] { return make_speech_page(form_); });
  add_page(form_.frm_settings, [this] { return make_options_page(form_, form_, form_, form_); });

  splitter_ = new QSplitter;
  QSplitter* splitter = splitter_;
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(1);
  side_ = new SidePane(form_);
  splitter->addWidget(side_);
  auto* right = new QWidget;
  auto* rows = new QVBoxLayout(right);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(make_banner(form_, {&form_.frm_devices, &form_.frm_event}, right));
  rows->addWidget(pages_, 1);
  splitter->addWidget(right);
  splitter->setStretchFactor(1, 1);
  connect(splitter, &QSplitter::splitterMoved, this, [this] {
    if (!side_->is_narrow()) form_.side_width = side_->width();
  });
  follow(form_.side_width, this, [this](int) { show_side_width(); });
  setCentralWidget(splitter);
  setStatusBar(new StatusBarView(form_.Statusbar, form_, this));
  new MessageToast(form_, this, pages_);
  new MessageListView(form_, this, statusBar());
  new FinderView(form_, this);
  add_window_keys(form_, this);
  side_->take_focus();
  for (Menu* menu : {&form_.mnuPopup, &form_.mnuPopup1, &form_.sspp3}) add_menu(*menu);
}

// A page is built when it is first shown: most people open few of them in one sitting.
void MainWindowView::add_page(Frame& frame, std::function<QWidget*()> make) {
  auto* place = new QWidget;
  auto* rows = new QVBoxLayout(place);
  rows->setContentsMargins(0, 0, 0, 0);
  pages_->addWidget(place);
  follow(frame.visible, this, [this, place, rows, make = std::move(make)](bool visible) {
    shown_pages_.removeOne(place);
    if (visible) {
      if (rows->isEmpty()) rows->addWidget(make());
      shown_pages_ << place;
    }
    // Of several that are visible the one shown last; none at all leaves the place empty.
    pages_->setCurrentWidget(shown_pages_.isEmpty() ? no_page_ : shown_pages_.last());
  });
}

void MainWindowView::add_menu(Menu& menu) {
  auto* shown = new QMenu(qt::from_code_page(menu.caption), this);
  fill_menu(*shown, menu);
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

void MainWindowView::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program closes the window when it has done its last work
  form_.close_requested();
}

// A window that is disabled takes no input but looks as usual: it is only for a moment, and greying
// everything would flicker. Other windows, such as questions, are not concerned.
bool MainWindowView::eventFilter(QObject* watched, QEvent* event) {
  if (!is_input(event->type())) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != this) return false;
  note_device(*event);
  return !form_.enabled && !lets_go(*widget, *event) &&
         !(form_.is_first_run && types_letter(*widget, *event));
}

// The field of the first run waits for a name while the first search disables the window: letters
// do nothing but stand in it.
bool MainWindowView::types_letter(const QWidget& widget, const QEvent& event) {
  if (event.type() != QEvent::KeyPress || !qobject_cast<const QLineEdit*>(&widget)) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  const bool shortcut =
      key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  return key.key() == Qt::Key_Backspace ||
         (!shortcut && !key.text().isEmpty() && key.text().front().isPrint());
}

// What was pressed before the window was disabled must not stay down. A slider is told: the move
// was made; a button is let go without effect.
bool MainWindowView::lets_go(QWidget& widget, const QEvent& event) {
  if (event.type() != QEvent::MouseButtonRelease) return false;
  if (auto* button = qobject_cast<QAbstractButton*>(&widget)) button->setDown(false);
  return qobject_cast<QAbstractSlider*>(&widget) != nullptr;
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
  fit_side();
}

// A field that has the keyboard undoes its own typing.
void MainWindowView::keyPressEvent(QKeyEvent* event) {
  const bool types = QApplication::focusWidget() &&
                     QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled);
  if (event->matches(QKeySequence::Undo) && !types)
    form_.undo_latest_asked();
  else
    QMainWindow::keyPressEvent(event);
}

void MainWindowView::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::FontChange) fit_side();
}

// The side keeps to its own limits.
void MainWindowView::show_side_width() {
  const int side = side_->is_narrow() ? side_->minimumWidth() : form_.side_width.get();
  splitter_->setSizes({side, std::max(1, width() - side)});
}

void MainWindowView::fit_side() {
  if (!side_) return;
  const int letter = std::max(1, QFontInfo(font()).pixelSize());
  // The usual letter, and smaller ones alike.
  const bool narrow = width() * kUsualLetter < kNarrow * std::max(letter, kUsualLetter);
  if (narrow == side_->is_narrow()) return;
  side_->set_narrow(narrow);
  show_side_width();
}

}  // namespace homewarden::view
