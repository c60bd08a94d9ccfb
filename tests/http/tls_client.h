#pragma once

#include <gnutls/gnutls.h>

#include <string>

#include "tests/http/client.h"

namespace homewarden::testing {

// A client over TLS that believes any certificate.
class TlsClient : public Client {
 public:
  // `priorities` as GnuTLS has them; `name` is the host that it asks for, "" for none.
  TlsClient(SocketLoop& loop, int port, const std::string& priorities = "NORMAL",
            const std::string& name = "localhost");
  ~TlsClient() override;

  // Whether both have agreed on how to speak.
  bool is_secure() const { return secure_; }
  // SHA-256 of the certificate that was shown, "AB:CD:...".
  std::string fingerprint() const;

 protected:
  ssize_t give(const char* data, std::size_t size) override;
  ssize_t get(char* data, std::size_t room) override;

 private:
  gnutls_session_t session_ = nullptr;
  gnutls_certificate_credentials_t credentials_ = nullptr;
  bool secure_ = false;
};

}  // namespace homewarden::testing
