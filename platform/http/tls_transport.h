#pragma once

#include <gnutls/abstract.h>

#include <cstddef>
#include <memory>

#include "platform/http/tls_certificate.h"
#include "platform/web_host.h"

namespace homewarden::http {

// TLS 1.2 and newer, with forward secrecy and authenticated encryption alone; the server's order
// counts. https://gnutls.org/manual/html_node/Priority-Strings.html
inline constexpr const char* kTlsPriorities =
    "NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2:-KX-ALL:+ECDHE-ECDSA:+ECDHE-RSA:"
    "-CIPHER-ALL:+AES-128-GCM:+AES-256-GCM:+CHACHA20-POLY1305:-MAC-ALL:+AEAD:%SERVER_PRECEDENCE";

// What the connections of a server have in common.
struct Tls {
  WebHost& host;
  std::shared_ptr<const TlsCertificate> certificate{};  // for the next ones
  bool moved = false;  // set when one has sent or received anything, or something else was done
};

// The socket of a connection, by which its TLS session reads and writes. Keeps the certificate that
// the connection began with.
class TlsTransport {
 public:
  // The session is the library's and must outlive this, but nothing is read or written then.
  TlsTransport(Tls& tls, gnutls_session_t session, int socket);
  TlsTransport(const TlsTransport&) = delete;
  TlsTransport& operator=(const TlsTransport&) = delete;
  ~TlsTransport();

  void has_moved() { tls_.moved = true; }

  // Gives GnuTLS the certificate for a session that has a transport; of the form of its
  // gnutls_certificate_retrieve_function2.
  static int retrieve(gnutls_session_t session, const gnutls_datum_t* authorities,
                      int authority_count, const gnutls_pk_algorithm_t* algorithms,
                      int algorithm_count, gnutls_pcert_st** chain, unsigned* chain_size,
                      gnutls_privkey_t* key);

 private:
  static ssize_t pull(gnutls_transport_ptr_t transport, void* data, std::size_t size);
  static ssize_t push(gnutls_transport_ptr_t transport, const void* data, std::size_t size);

  Tls& tls_;
  const gnutls_session_t session_;
  const int socket_;
  std::shared_ptr<const TlsCertificate> certificate_;
};

}  // namespace homewarden::http
