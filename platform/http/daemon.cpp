#include "platform/http/daemon.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "base/text.h"
#include "platform/http/connections.h"
#include "platform/http/tls_transport.h"

namespace homewarden::http {
namespace {

// For the head of a request and of its answer.
constexpr std::size_t kConnectionMemory = 32 * 1024;

// More than it takes to go through all that a session holds decrypted, 16 KB, in the steps of the
// library's buffer.
constexpr int kIdleRuns = 32;

Connection* connection_of(MHD_Connection* library) {
  const auto* info = MHD_get_connection_info(library, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return info == nullptr ? nullptr : static_cast<Connection*>(info->socket_context);
}

MHD_Result on_accept(void* events, const sockaddr* from, socklen_t) {
  return static_cast<DaemonEvents*>(events)->admits(from) ? MHD_YES : MHD_NO;
}

void* on_line(void* events, const char* uri, MHD_Connection* library) {
  Connection& connection = *connection_of(library);
  if (connection.tls) connection.tls->has_moved();
  static_cast<DaemonEvents*>(events)->line_read(connection, uri);
  return nullptr;
}

MHD_Result on_request(void* events, MHD_Connection* library, const char* /*url*/,
                      const char* method, const char* version, const char* body,
                      std::size_t* body_size, void** context) {
  auto& to = *static_cast<DaemonEvents*>(events);
  Connection& connection = *connection_of(library);
  if (connection.tls) connection.tls->has_moved();
  bool go_on = false;
  if (*context == nullptr) {
    *context = &connection;
    go_on = to.head_read(connection, library, method, version);
  } else if (*body_size != 0) {
    go_on = to.body_read(connection, {body, *body_size});
    *body_size = 0;
  } else {
    go_on = to.request_read(connection);
  }
  return go_on ? MHD_YES : MHD_NO;
}

void on_completed(void* events, MHD_Connection* library, void** context,
                  MHD_RequestTerminationCode) {
  *context = nullptr;
  if (Connection* connection = connection_of(library))
    static_cast<DaemonEvents*>(events)->completed(*connection);
}

// Paths are decoded by safe_path(), once.
std::size_t leave_encoded(void*, MHD_Connection*, char* text) {
  return std::strlen(text);
}

}  // namespace

Daemon::Daemon(DaemonEvents& events, Handle listening, std::size_t most_connections, Tls* tls)
    : events_(events), tls_(tls) {
  void* to = &events;
  const int socket = listening.release();  // the library closes it
  std::vector<MHD_OptionItem> options;
  if (tls != nullptr) {
    auto* retrieve = reinterpret_cast<void*>(&TlsTransport::retrieve);
    options.push_back({MHD_OPTION_HTTPS_CERT_CALLBACK, 0, retrieve});
    options.push_back({MHD_OPTION_HTTPS_PRIORITIES, 0, const_cast<char*>(kTlsPriorities)});
  }
  options.push_back({MHD_OPTION_END, 0, nullptr});
  unsigned flags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME;
  if (tls != nullptr) flags |= MHD_USE_TLS;
  daemon_ = MHD_start_daemon(flags, 0, &on_accept, to, &on_request, to, MHD_OPTION_ARRAY,
                             options.data(), MHD_OPTION_LISTEN_SOCKET, socket,
                             MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(most_connections),
                             MHD_OPTION_CONNECTION_MEMORY_LIMIT, kConnectionMemory,
                             MHD_OPTION_STRICT_FOR_CLIENT, 0, MHD_OPTION_NOTIFY_CONNECTION,
                             &on_connection, this, MHD_OPTION_NOTIFY_COMPLETED, &on_completed, to,
                             MHD_OPTION_URI_LOG_CALLBACK, &on_line, to,
                             MHD_OPTION_UNESCAPE_CALLBACK, &leave_encoded, to, MHD_OPTION_END);
  if (daemon_ == nullptr) throw std::runtime_error("the HTTP library does not start");
}

Daemon::~Daemon() {
  MHD_stop_daemon(daemon_);
}

int Daemon::descriptor() const {
  return MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
}

void Daemon::on_connection(void* daemon, MHD_Connection* library, void** context,
                           MHD_ConnectionNotificationCode code) {
  const auto& self = *static_cast<Daemon*>(daemon);
  if (code == MHD_CONNECTION_NOTIFY_STARTED) {
    const auto* socket = MHD_get_connection_info(library, MHD_CONNECTION_INFO_CONNECTION_FD);
    const int number = socket->connect_fd;
    const auto* from = MHD_get_connection_info(library, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
    Connection* connection = self.events_.opened(library, number, from->client_addr);
    *context = connection;
    if (self.tls_ == nullptr) return;
    const auto* info = MHD_get_connection_info(library, MHD_CONNECTION_INFO_GNUTLS_SESSION);
    auto* session = static_cast<gnutls_session_t>(info->tls_session);
    connection->tls = std::make_unique<TlsTransport>(*self.tls_, session, number);
  } else if (*context != nullptr) {
    self.events_.closed(*static_cast<Connection*>(*context));
    *context = nullptr;
  }
}

void Daemon::run() {
  if (tls_ != nullptr) tls_->moved = false;
  MHD_run(daemon_);
  if (tls_ != nullptr) idle_runs_ = tls_->moved ? 0 : std::min(idle_runs_ + 1, kIdleRuns);
}

bool Daemon::has_more() const {
  MHD_UNSIGNED_LONG_LONG milliseconds = 0;
  if (MHD_get_timeout(daemon_, &milliseconds) != MHD_YES || milliseconds != 0) return false;
  // A connection whose handshake waits for the client counts as ready to the library all the time.
  // What it waits for is announced by the descriptor.
  return idle_runs_ < kIdleRuns;
}

}  // namespace homewarden::http
