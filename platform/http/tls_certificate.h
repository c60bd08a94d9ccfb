#pragma once

#include <gnutls/abstract.h>

#include <chrono>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace homewarden::http {

// A certificate with its key, ready to be shown to clients.
class TlsCertificate {
 public:
  using Time = std::chrono::system_clock::time_point;
  // Or why they cannot be used: a whole sentence.
  using Result = std::variant<std::shared_ptr<const TlsCertificate>, std::string>;

  // From texts in PEM: the certificate with those of its chain behind it, and the key that belongs
  // to it, without a password. Whether its time has come or is over is not looked at.
  static Result read(const std::string& certificate, const std::string& key);

  TlsCertificate(const TlsCertificate&) = delete;
  TlsCertificate& operator=(const TlsCertificate&) = delete;
  ~TlsCertificate();

  // For GnuTLS, which does not change them; valid as long as this is.
  gnutls_pcert_st* chain() const { return chain_.data(); }
  unsigned chain_size() const { return static_cast<unsigned>(chain_.size()); }
  gnutls_privkey_t key() const { return key_; }

  // The names and addresses that it is for: "house.local, 192.168.1.2".
  const std::string& names() const { return names_; }
  const std::string& fingerprint() const { return fingerprint_; }  // SHA-256, "AB:CD:..."
  Time from() const { return from_; }
  Time until() const { return until_; }

 private:
  TlsCertificate() = default;
  void describe(gnutls_x509_crt_t leaf);

  mutable std::vector<gnutls_pcert_st> chain_;
  gnutls_privkey_t key_ = nullptr;
  std::string names_;
  std::string fingerprint_;
  Time from_;
  Time until_;
};

// "2027-11-24", in UTC.
std::string date_of(TlsCertificate::Time time);

}  // namespace homewarden::http
