#include "ui/qt/listen_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QKeySequenceEdit>

#include "platform/qt/text_codec.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr QKeyCombination kAlways(Qt::Key_ScrollLock);

bool is_modifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    default:
      return false;
  }
}

bool can_begin_with(const QKeySequence& keys) {
  return !keys.isEmpty() && can_begin_listening(keys[0]);
}

bool is_yes(const QKeyEvent& key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool is_recorder(const QWidget* widget) {
  for (; widget; widget = widget->parentWidget())
    if (qobject_cast<const QKeySequenceEdit*>(widget)) return true;
  return false;
}

}  // namespace

bool can_begin_listening(QKeyCombination key) {
  constexpr Qt::KeyboardModifiers kCommanding =
      Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  if (is_modifier(key.key()) || key.key() == Qt::Key_Escape) return false;
  if ((key.keyboardModifiers() & kCommanding) != 0) return true;
  return (key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35) || key.key() == Qt::Key_Pause ||
         key.key() == Qt::Key_ScrollLock || key.key() == Qt::Key_Print ||
         key.key() >= Qt::Key_Back;  // those of keyboards for music and offices
}

ListenKeys::ListenKeys(SpeechPanel& panel, FrmCharacter& figure, FrmSpeechSheet& sheet,
                       QObject* parent)
    : QObject(parent), panel_(panel), figure_(figure), sheet_(sheet), global_([this] {
        panel_.cmd_listen.click();
      }) {
  watch(panel.cmd_listen.visible.changed, this, [this] { listen_for_keys(); });
  watch(sheet.key.changed, this, [this] { listen_for_keys(); });
  follow(figure.asking, this, [this](bool asking) { answers_ = asking; });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    const bool records = is_recorder(now);
    if (records == recording_) return;
    recording_ = records;
    listen_for_keys();
  });
  qApp->installEventFilter(this);
  listen_for_keys();
}

// A key that is being chosen must reach the field where that is done.
void ListenKeys::listen_for_keys() {
  if (!panel_.cmd_listen.visible || recording_) {
    global_.listen_for({});
    return;
  }
  QList<QKeyCombination> keys{kAlways};
  const QKeySequence own(qt::from_code_page(sheet_.key.get()), QKeySequence::PortableText);
  if (can_begin_with(own) && own[0] != kAlways) keys << own[0];
  const auto reach = global_.listen_for(keys);
  sheet_.key_reach = !global_.can()                     ? KeyReach::kWindow
                     : reach == GlobalKeys::Reach::kAll ? KeyReach::kEverywhere
                                                        : KeyReach::kTaken;
}

bool ListenKeys::is_listen_key(const QKeyEvent& key) const {
  if (!panel_.cmd_listen.visible || recording_) return false;
  const QKeyCombination pressed(key.modifiers() & ~Qt::KeypadModifier,
                                static_cast<Qt::Key>(key.key()));
  const QKeySequence own(qt::from_code_page(sheet_.key.get()), QKeySequence::PortableText);
  return pressed == kAlways || (can_begin_with(own) && own[0] == pressed);
}

bool ListenKeys::takes(const QKeyEvent& key) const {
  if (is_listen_key(key)) return true;
  if (recording_ || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  if (answers_ && is_yes(key)) return true;
  return key.key() == Qt::Key_Escape && (answers_ || panel_.listening);
}

void ListenKeys::take(const QKeyEvent& key) {
  if (key.isAutoRepeat()) return;
  if (is_listen_key(key) || (key.key() == Qt::Key_Escape && panel_.listening))
    panel_.cmd_listen.click();
  else if (is_yes(key))
    figure_.cmd_yes.click();
  else
    figure_.cmd_no.click();
}

bool ListenKeys::eventFilter(QObject* /*watched*/, QEvent* event) {
  const bool is_first = event->type() == QEvent::ShortcutOverride;
  if (!is_first && event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (QApplication::activePopupWidget()) return false;  // a menu has its own
  if (!takes(key)) {
    if (!is_modifier(key.key())) answers_ = false;
    return false;
  }
  // Taken here, it is no shortcut of the window any more and comes once again as a press.
  if (!is_first) take(key);
  event->accept();
  return true;
}

}  // namespace homewarden::view
