#include "tests/http/tls_client.h"

#include <fcntl.h>
#include <gnutls/x509.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace homewarden::testing {
namespace {

ssize_t as_of_socket(ssize_t result) {
  if (result >= 0) return result;
  const bool waits = gnutls_error_is_fatal(static_cast<int>(result)) == 0;
  errno = waits ? EAGAIN : ECONNRESET;
  return -1;
}

}  // namespace

TlsClient::TlsClient(SocketLoop& loop, int port, const std::string& priorities,
                     const std::string& name)
    : Client(loop, port) {
  ::fcntl(socket_.get(), F_SETFL, O_NONBLOCK);
  gnutls_init(&session_, GNUTLS_CLIENT | GNUTLS_NONBLOCK | GNUTLS_NO_SIGNAL);
  gnutls_certificate_allocate_credentials(&credentials_);
  gnutls_credentials_set(session_, GNUTLS_CRD_CERTIFICATE, credentials_);
  gnutls_priority_set_direct(session_, priorities.c_str(), nullptr);
  if (!name.empty()) gnutls_server_name_set(session_, GNUTLS_NAME_DNS, name.data(), name.size());
  gnutls_transport_set_int(session_, socket_.get());
  int result = GNUTLS_E_AGAIN;
  loop.run_until([&] {
    result = gnutls_handshake(session_);
    return result == 0 || gnutls_error_is_fatal(result) != 0;
  });
  secure_ = result == 0;
}

TlsClient::~TlsClient() {
  gnutls_deinit(session_);
  gnutls_certificate_free_credentials(credentials_);
}

std::string TlsClient::fingerprint() const {
  unsigned count = 0;
  const gnutls_datum_t* chain = gnutls_certificate_get_peers(session_, &count);
  std::array<unsigned char, 32> hash{};
  std::size_t size = hash.size();
  if (count == 0 || gnutls_fingerprint(GNUTLS_DIG_SHA256, chain, hash.data(), &size) != 0)
    return "";
  std::string text;
  for (const unsigned char byte : hash) {
    std::array<char, 4> part{};
    std::snprintf(part.data(), part.size(), "%s%02X", text.empty() ? "" : ":", byte);
    text += part.data();
  }
  return text;
}

ssize_t TlsClient::give(const char* data, std::size_t size) {
  return as_of_socket(gnutls_record_send(session_, data, size));
}

ssize_t TlsClient::get(char* data, std::size_t room) {
  return as_of_socket(gnutls_record_recv(session_, data, room));
}

}  // namespace homewarden::testing
