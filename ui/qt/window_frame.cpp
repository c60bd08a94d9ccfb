#include "ui/qt/window_frame.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "platform/qt/text_codec.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr float kTwipsPerPixel = 15;

// What is left for the frame of a window before the window manager has told its size.
constexpr QSize kUsualFrame(12, 40);

int to_pixels(float twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}
float to_twips(int pixels) {
  return static_cast<float>(pixels) * kTwipsPerPixel;
}

}  // namespace

WindowFrame::WindowFrame(Window& form, QWidget* window)
    : QObject(window), form_(form), window_(*window) {
  window->installEventFilter(this);
  follow(form.caption, this,
         [this](const std::string& text) { window_.setWindowTitle(qt::from_code_page(text)); });
  follow(form.width, this, [this](float) { show_size(); });
  watch(form.height.changed, this, [this] { show_size(); });
  follow(form.left, this, [this](float) { show_place(); });
  watch(form.top.changed, this, [this] { show_place(); });
  watch(form.state.changed, this, [this] { show_state(); });
  watch(form.topmost.changed, this, [this] {
    // Changing the flag of the widget would hide it.
    if (QWindow* native = window_.windowHandle())
      native->setFlag(Qt::WindowStaysOnTopHint, form_.topmost);
    else
      window_.setWindowFlag(Qt::WindowStaysOnTopHint, form_.topmost);
  });
  watch(form.raised, this, [this] {
    window_.raise();
    window_.activateWindow();
    raise_boxes();
  });
  follow(form.visible, this, [this](bool) { show_visible(); });
}

void WindowFrame::show_place() {
  if (placing_) return;
  const QScopedValueRollback<bool> placing(placing_, true);
  window_.move(to_pixels(form_.left), to_pixels(form_.top));
}

void WindowFrame::show_size() {
  if (placing_) return;
  const QScopedValueRollback<bool> placing(placing_, true);
  window_.resize(to_pixels(form_.width), to_pixels(form_.height));
  if (window_.isVisible()) fit_to_screen();
}

// A hidden window stays minimised until it is shown: X11 maps one that is taken out of that state.
void WindowFrame::show_state() {
  const bool minimized = form_.state == WindowState::kMinimized;
  if (minimized == window_.isMinimized() || (!minimized && window_.isHidden())) return;
  window_.setWindowState(minimized ? window_.windowState() | Qt::WindowMinimized
                                   : window_.windowState() & ~Qt::WindowMinimized);
}

void WindowFrame::show_visible() {
  if (form_.visible) {
    if (form_.state == WindowState::kNormal && window_.isMinimized())
      window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
    fit_to_screen();
  }
  window_.setVisible(form_.visible);
}

// The window manager has minimised an open box together with its window: it would stay so, and the
// window take no click. One that was opened while the window was hidden would lie behind it.
void WindowFrame::raise_boxes() {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    auto* box = qobject_cast<QDialog*>(top);
    if (!box || !box->isVisible()) continue;
    if (!box->parentWidget()) {
      box->setParent(&window_, box->windowFlags());
      box->open();
    }
    box->setWindowState(box->windowState() & ~Qt::WindowMinimized);
    box->raise();
    box->activateWindow();
  }
}

bool WindowFrame::is_as_placed() const {
  return !(window_.windowState() &
           (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
}

void WindowFrame::tell_place() {
  if (placing_ || !window_.isVisible() || !is_as_placed()) return;
  const QScopedValueRollback<bool> placing(placing_, true);
  form_.left = to_twips(window_.pos().x());
  form_.top = to_twips(window_.pos().y());
}

void WindowFrame::tell_size() {
  if (placing_ || !window_.isVisible() || !is_as_placed()) return;
  const QScopedValueRollback<bool> placing(placing_, true);
  form_.width = to_twips(window_.width());
  form_.height = to_twips(window_.height());
}

// Only a window that is shown can have been minimised by the person.
void WindowFrame::tell_state() {
  if (!window_.isVisible()) return;
  form_.state = window_.isMinimized() ? WindowState::kMinimized : WindowState::kNormal;
}

// A window that is larger than the screen has parts that nobody can reach.
void WindowFrame::fit_to_screen() {
  const QScreen* screen = window_.screen();
  if (!screen || !is_as_placed()) return;
  const QRect free = screen->availableGeometry();
  const QSize known = window_.frameGeometry().size() - window_.size();
  const QSize frame = known.isNull() ? kUsualFrame : known;
  const QSize fitting = window_.size().boundedTo(free.size() - frame);
  if (fitting == window_.size()) return;
  QRect whole(window_.pos(), fitting + frame);
  whole.moveRight(std::min(whole.right(), free.right()));
  whole.moveBottom(std::min(whole.bottom(), free.bottom()));
  const QScopedValueRollback<bool> placing(placing_, true);
  window_.resize(fitting);
  window_.move(whole.topLeft());
  form_.width = to_twips(window_.width());
  form_.height = to_twips(window_.height());
  form_.left = to_twips(window_.x());
  form_.top = to_twips(window_.y());
}

bool WindowFrame::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
      tell_place();
      break;
    case QEvent::Resize:
      tell_size();
      break;
    case QEvent::WindowStateChange:
      tell_state();
      break;
    default:
      break;
  }
  return false;
}

}  // namespace homewarden::view
