#pragma once

#include <QAbstractNativeEventFilter>
#include <QKeySequence>
#include <QList>
#include <cstdint>
#include <functional>

struct xcb_connection_t;

namespace homewarden::view {

// Whether windows of this desktop can be partly transparent. True where it is not X11.
bool blends_windows();

// Keys that are heard whichever window has the keyboard, on X11.
class GlobalKeys : public QAbstractNativeEventFilter {
 public:
  // How much of what was asked for is heard.
  enum class Reach { kAll, kSome, kNone };

  // The function is called at each press, not for the repeats while a key is held.
  explicit GlobalKeys(std::function<void()> pressed);
  GlobalKeys(const GlobalKeys&) = delete;
  GlobalKeys& operator=(const GlobalKeys&) = delete;
  ~GlobalKeys() override;

  // Whether there is a desktop that can do it.
  bool can() const { return x11_ != nullptr; }
  // Listens for these in the place of those before; none for an empty list. A key that another
  // program listens for stays with that.
  Reach listen_for(const QList<QKeyCombination>& keys);

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 private:
  struct Grab {
    std::uint8_t key = 0;
    std::uint16_t modifiers = 0;
  };

  bool grab(QKeyCombination combination);
  QList<std::uint8_t> keys_that_give(std::uint32_t symbol) const;
  void let_go();

  std::function<void()> pressed_;
  xcb_connection_t* x11_ = nullptr;
  std::uint32_t root_ = 0;
  QList<Grab> grabs_;
  std::uint32_t released_ = 0;  // the time of the last release
};

}  // namespace homewarden::view
