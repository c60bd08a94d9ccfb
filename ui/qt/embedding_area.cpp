#include "ui/qt/embedding_area.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
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

int screen_number() {
  char* host = nullptr;
  int display = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen)) std::free(host);
  return screen;
}

}  // namespace

EmbeddingArea::EmbeddingArea(std::function<void()> came) {
  const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (native) x11_ = native->connection();
  if (!x11_) return;  // some know the interface and have no display
  area_ = atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(screen_number()));
  announced_ = atom("MANAGER");
  came_.setSingleShot(true);
  came_.setInterval(0);
  QObject::connect(&came_, &QTimer::timeout, &came_, std::move(came));
  qGuiApp->installNativeEventFilter(this);
}

bool EmbeddingArea::is_there() const {
  if (!x11_) return false;
  const auto owner =
      owned(xcb_get_selection_owner_reply(x11_, xcb_get_selection_owner(x11_, area_), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

bool EmbeddingArea::nativeEventFilter(const QByteArray& /*type*/, void* message,
                                      qintptr* /*result*/) {
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
  const auto* told = static_cast<const xcb_client_message_event_t*>(message);
  if (told->type == announced_ && told->data.data32[1] == area_) came_.start();
  return false;
}

std::uint32_t EmbeddingArea::atom(const QByteArray& name) const {
  const auto length = static_cast<std::uint16_t>(name.size());
  const auto reply = owned(
      xcb_intern_atom_reply(x11_, xcb_intern_atom(x11_, 0, length, name.constData()), nullptr));
  return reply ? reply->atom : static_cast<std::uint32_t>(XCB_ATOM_NONE);
}

}  // namespace homewarden::view
