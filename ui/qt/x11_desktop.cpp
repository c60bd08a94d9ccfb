#include "ui/qt/x11_desktop.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

namespace homewarden::view {
namespace {

// Replies are the caller's to free.
template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
  return {reply, &std::free};
}

xcb_connection_t* connection() {
  const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return native ? native->connection() : nullptr;
}

// The number of a key's sign in the X protocol ("keysym"); 0 for one that is not known here.
std::uint32_t symbol_of(Qt::Key key) {
  if (key >= Qt::Key_A && key <= Qt::Key_Z)
    return static_cast<std::uint32_t>(key - Qt::Key_A + 'a');
  if (key >= Qt::Key_Space && key <= Qt::Key_ydiaeresis) return static_cast<std::uint32_t>(key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
    return 0xffbeU + static_cast<std::uint32_t>(key - Qt::Key_F1);
  static constexpr std::pair<Qt::Key, std::uint32_t> kOthers[] = {
      {Qt::Key_ScrollLock, 0xff14}, {Qt::Key_Pause, 0xff13},    {Qt::Key_Print, 0xff61},
      {Qt::Key_Insert, 0xff63},     {Qt::Key_Home, 0xff50},     {Qt::Key_End, 0xff57},
      {Qt::Key_PageUp, 0xff55},     {Qt::Key_PageDown, 0xff56}, {Qt::Key_Menu, 0xff67}};
  for (const auto& [other, symbol] : kOthers)
    if (other == key) return symbol;
  return 0;
}

std::uint16_t modifiers_of(Qt::KeyboardModifiers modifiers) {
  unsigned mask = 0;
  if (modifiers.testFlag(Qt::ShiftModifier)) mask |= XCB_MOD_MASK_SHIFT;
  if (modifiers.testFlag(Qt::ControlModifier)) mask |= XCB_MOD_MASK_CONTROL;
  if (modifiers.testFlag(Qt::AltModifier)) mask |= XCB_MOD_MASK_1;
  if (modifiers.testFlag(Qt::MetaModifier)) mask |= XCB_MOD_MASK_4;
  return static_cast<std::uint16_t>(mask);
}

// A key counts with Caps Lock and Num Lock too.
constexpr std::uint16_t kLocks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
constexpr std::uint16_t kCounting =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

}  // namespace

// Whoever puts windows together has a selection named after the screen
// (Extended Window Manager Hints, "Compositing Managers").
bool blends_windows() {
  xcb_connection_t* x11 = connection();
  if (!x11) return true;
  const QByteArray name = "_NET_WM_CM_S0";
  const auto atom = owned(xcb_intern_atom_reply(
      x11, xcb_intern_atom(x11, 0, static_cast<std::uint16_t>(name.size()), name.constData()),
      nullptr));
  if (!atom) return false;
  const auto owner =
      owned(xcb_get_selection_owner_reply(x11, xcb_get_selection_owner(x11, atom->atom), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

GlobalKeys::GlobalKeys(std::function<void()> pressed)
    : pressed_(std::move(pressed)), x11_(connection()) {
  if (!x11_) return;
  root_ = xcb_setup_roots_iterator(xcb_get_setup(x11_)).data->root;
  qGuiApp->installNativeEventFilter(this);
}

GlobalKeys::~GlobalKeys() {
  let_go();
}

GlobalKeys::Reach GlobalKeys::listen_for(const QList<QKeyCombination>& keys) {
  let_go();
  if (!x11_) return Reach::kNone;
  const auto got =
      std::count_if(keys.begin(), keys.end(), [this](QKeyCombination key) { return grab(key); });
  return got == keys.size() ? Reach::kAll : got > 0 ? Reach::kSome : Reach::kNone;
}

bool GlobalKeys::grab(QKeyCombination combination) {
  const std::uint32_t symbol = symbol_of(combination.key());
  const std::uint16_t modifiers = modifiers_of(combination.keyboardModifiers());
  bool all = false;
  for (const std::uint8_t key : symbol == 0 ? QList<std::uint8_t>() : keys_that_give(symbol)) {
    all = true;
    for (const std::uint16_t locks : kLocks) {
      const auto with = static_cast<std::uint16_t>(modifiers | locks);
      const auto refused = owned(
          xcb_request_check(x11_, xcb_grab_key_checked(x11_, 0, root_, with, key,
                                                       XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
      if (refused)
        all = false;
      else
        grabs_ << Grab{key, with};
    }
  }
  return all;
}

QList<std::uint8_t> GlobalKeys::keys_that_give(std::uint32_t symbol) const {
  const xcb_setup_t* setup = xcb_get_setup(x11_);
  const int count = setup->max_keycode - setup->min_keycode + 1;
  const auto mapping = owned(xcb_get_keyboard_mapping_reply(
      x11_, xcb_get_keyboard_mapping(x11_, setup->min_keycode, static_cast<std::uint8_t>(count)),
      nullptr));
  QList<std::uint8_t> keys;
  if (!mapping || mapping->keysyms_per_keycode == 0) return keys;
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  const int length = xcb_get_keyboard_mapping_keysyms_length(mapping.get());
  for (int place = 0; place < length; place += mapping->keysyms_per_keycode)
    if (symbols[place] == symbol)
      keys << static_cast<std::uint8_t>(setup->min_keycode + place / mapping->keysyms_per_keycode);
  return keys;
}

void GlobalKeys::let_go() {
  if (grabs_.isEmpty() || !connection()) return;
  for (const Grab& one : std::as_const(grabs_)) xcb_ungrab_key(x11_, one.key, root_, one.modifiers);
  xcb_flush(x11_);
  grabs_.clear();
}

// A key that is held is released and pressed again at one and the same time.
bool GlobalKeys::nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const int kind = event->response_type & 0x7F;
  if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) return false;
  const auto* key = static_cast<const xcb_key_press_event_t*>(message);
  const bool is_ours = std::any_of(grabs_.begin(), grabs_.end(), [key](const Grab& one) {
    return one.key == key->detail && (one.modifiers & kCounting) == (key->state & kCounting);
  });
  if (key->event != root_ || !is_ours) return false;
  if (kind == XCB_KEY_RELEASE)
    released_ = key->time;
  else if (key->time != released_)
    pressed_();
  return true;
}

}  // namespace homewarden::view
