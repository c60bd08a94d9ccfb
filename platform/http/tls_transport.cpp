#include "platform/http/tls_transport.h"

#include <cerrno>

namespace homewarden::http {

TlsTransport::TlsTransport(Tls& tls, gnutls_session_t session, int socket)
    : tls_(tls), session_(session), socket_(socket) {
  gnutls_transport_set_ptr(session, this);
  gnutls_transport_set_pull_function(session, &pull);
  gnutls_transport_set_push_function(session, &push);
  tls.host.send_at_once(socket);  // tickets are sent between handshake and answer
  has_moved();
}

TlsTransport::~TlsTransport() {
  gnutls_transport_set_ptr(session_, nullptr);
}

int TlsTransport::retrieve(gnutls_session_t session, const gnutls_datum_t*, int,
                           const gnutls_pk_algorithm_t*, int, gnutls_pcert_st** chain,
                           unsigned* chain_size, gnutls_privkey_t* key) {
  auto* transport = static_cast<TlsTransport*>(gnutls_transport_get_ptr(session));
  if (transport == nullptr || !transport->tls_.certificate) return -1;
  transport->certificate_ = transport->tls_.certificate;
  *chain = transport->certificate_->chain();
  *chain_size = transport->certificate_->chain_size();
  *key = transport->certificate_->key();
  return 0;
}

ssize_t TlsTransport::pull(gnutls_transport_ptr_t transport, void* data, std::size_t size) {
  auto* self = static_cast<TlsTransport*>(transport);
  if (self == nullptr) {
    errno = ECONNRESET;
    return -1;
  }
  const ssize_t taken = self->tls_.host.receive(self->socket_, data, size);
  if (taken > 0) self->has_moved();
  return taken;
}

ssize_t TlsTransport::push(gnutls_transport_ptr_t transport, const void* data, std::size_t size) {
  auto* self = static_cast<TlsTransport*>(transport);
  if (self == nullptr) {
    errno = ECONNRESET;
    return -1;
  }
  const ssize_t given = self->tls_.host.send(self->socket_, data, size);
  if (given > 0) self->has_moved();
  return given;
}

}  // namespace homewarden::http
