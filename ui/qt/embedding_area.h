#pragma once

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <cstdint>
#include <functional>

struct xcb_connection_t;

namespace homewarden::view {

// The notification area of X11 panels that embed the window of each icon.
class EmbeddingArea : public QAbstractNativeEventFilter {
 public:
  // `came` is called, from the loop, when an area has come.
  explicit EmbeddingArea(std::function<void()> came);

  // Whether an area is there, asked for anew. False where there is no X11.
  bool is_there() const;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 private:
  std::uint32_t atom(const QByteArray& name) const;

  xcb_connection_t* x11_ = nullptr;
  std::uint32_t area_ = 0;       // what the panel owns while it is there
  std::uint32_t announced_ = 0;  // what it tells all programs when it comes
  QTimer came_;
};

}  // namespace homewarden::view
