#include "platform/http/self_signed.h"

#include <gnutls/abstract.h>
#include <gnutls/crypto.h>
#include <gnutls/x509.h>

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include "platform/http/address.h"
#include "platform/web_https.h"

namespace homewarden::http {
namespace {

constexpr int kMostDays = 825;

using Certificate =
    std::unique_ptr<std::remove_pointer_t<gnutls_x509_crt_t>, decltype(&gnutls_x509_crt_deinit)>;
using Key = std::unique_ptr<std::remove_pointer_t<gnutls_x509_privkey_t>,
                            decltype(&gnutls_x509_privkey_deinit)>;

Certificate new_certificate() {
  gnutls_x509_crt_t raw = nullptr;
  if (gnutls_x509_crt_init(&raw) != 0) raw = nullptr;
  return {raw, &gnutls_x509_crt_deinit};
}

Key new_key() {
  gnutls_x509_privkey_t raw = nullptr;
  if (gnutls_x509_privkey_init(&raw) != 0) raw = nullptr;
  Key key(raw, &gnutls_x509_privkey_deinit);
  const unsigned curve = GNUTLS_CURVE_TO_BITS(GNUTLS_ECC_CURVE_SECP256R1);
  if (key && gnutls_x509_privkey_generate(key.get(), GNUTLS_PK_ECDSA, curve, 0) != 0) key.reset();
  return key;
}

bool add_name(gnutls_x509_crt_t certificate, const std::string& name) {
  const auto address = parse_address(name);
  if (!address)
    return gnutls_x509_crt_set_subject_alt_name(certificate, GNUTLS_SAN_DNSNAME, name.data(),
                                                static_cast<unsigned>(name.size()),
                                                GNUTLS_FSAN_APPEND) == 0;
  const bool is_v4 = name.find(':') == std::string::npos;
  const auto* bytes = address->bytes.data() + (is_v4 ? 12 : 0);
  return gnutls_x509_crt_set_subject_alt_name(certificate, GNUTLS_SAN_IPADDRESS, bytes,
                                              is_v4 ? 4 : 16, GNUTLS_FSAN_APPEND) == 0;
}

bool set_serial(gnutls_x509_crt_t certificate) {
  std::array<unsigned char, 16> serial{};
  if (gnutls_rnd(GNUTLS_RND_NONCE, serial.data(), serial.size()) != 0) return false;
  serial[0] = static_cast<unsigned char>((serial[0] & 0x7f) | 0x40);  // positive, of full length
  return gnutls_x509_crt_set_serial(certificate, serial.data(), serial.size()) == 0;
}

bool fill(gnutls_x509_crt_t certificate, gnutls_x509_privkey_t key,
          const std::vector<std::string>& names, std::chrono::system_clock::time_point now,
          int days) {
  using std::chrono::system_clock;
  const auto from = now - std::chrono::hours(1);
  const auto until = from + std::chrono::days(std::clamp(days, 1, kMostDays));
  const std::string subject = names.front().substr(0, 64);  // RFC 5280: no more
  return gnutls_x509_crt_set_version(certificate, 3) == 0 && set_serial(certificate) &&
         gnutls_x509_crt_set_activation_time(certificate, system_clock::to_time_t(from)) == 0 &&
         gnutls_x509_crt_set_expiration_time(certificate, system_clock::to_time_t(until) - 1) ==
             0 &&
         gnutls_x509_crt_set_dn_by_oid(certificate, GNUTLS_OID_X520_COMMON_NAME, 0, subject.data(),
                                       static_cast<unsigned>(subject.size())) == 0 &&
         gnutls_x509_crt_set_key(certificate, key) == 0 &&
         std::all_of(names.begin(), names.end(),
                     [&](const std::string& name) { return add_name(certificate, name); }) &&
         gnutls_x509_crt_set_basic_constraints(certificate, 0, -1) == 0 &&
         gnutls_x509_crt_set_key_usage(certificate, GNUTLS_KEY_DIGITAL_SIGNATURE) == 0 &&
         gnutls_x509_crt_set_key_purpose_oid(certificate, GNUTLS_KP_TLS_WWW_SERVER, 0) == 0;
}

bool sign(gnutls_x509_crt_t certificate, gnutls_x509_privkey_t key) {
  gnutls_privkey_t signer = nullptr;
  if (gnutls_privkey_init(&signer) != 0) return false;
  const bool done =
      gnutls_privkey_import_x509(signer, key, 0) == 0 &&
      gnutls_x509_crt_privkey_sign(certificate, certificate, signer, GNUTLS_DIG_SHA256, 0) == 0;
  gnutls_privkey_deinit(signer);
  return done;
}

// What the library exports, behind the line that tells it from files of others.
std::string taken(int exported, const gnutls_datum_t& data) {
  if (exported != 0) return "";
  std::string text = kMadeHere;
  text.append("\n").append(reinterpret_cast<const char*>(data.data), data.size);
  gnutls_free(data.data);
  return text;
}

}  // namespace

SelfSigned make_self_signed(const std::vector<std::string>& names,
                            std::chrono::system_clock::time_point now, int days) {
  const Key key = new_key();
  const Certificate certificate = new_certificate();
  if (!key || !certificate || names.empty() ||
      !fill(certificate.get(), key.get(), names, now, days) || !sign(certificate.get(), key.get()))
    return {};
  gnutls_datum_t data{};
  SelfSigned made;
  made.certificate =
      taken(gnutls_x509_crt_export2(certificate.get(), GNUTLS_X509_FMT_PEM, &data), data);
  const int exported =
      gnutls_x509_privkey_export2_pkcs8(key.get(), GNUTLS_X509_FMT_PEM, nullptr, 0, &data);
  made.key = taken(exported, data);
  if (made.certificate.empty() || made.key.empty()) return {};
  return made;
}

}  // namespace homewarden::http
