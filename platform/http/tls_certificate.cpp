#include "platform/http/tls_certificate.h"

#include <gnutls/x509.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "platform/http/address.h"

namespace homewarden::http {
namespace {

constexpr unsigned kLongestChain = 16;
constexpr std::size_t kMostNames = 20;

gnutls_datum_t datum_of(const std::string& text) {
  // The library asks for a pointer to what it will not change.
  auto* data = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
  return {data, static_cast<unsigned>(text.size())};
}

// The certificates of a PEM text, for as long as they are described.
struct Certificates {
  Certificates() = default;
  Certificates(const Certificates&) = delete;
  Certificates& operator=(const Certificates&) = delete;
  ~Certificates() {
    for (unsigned i = 0; i < size; ++i) gnutls_x509_crt_deinit(list[i]);
    gnutls_free(list);
  }

  // In the order of the chain; as they stand where they are none.
  bool read(const std::string& text) {
    const gnutls_datum_t data = datum_of(text);
    for (const unsigned flag : {unsigned{GNUTLS_X509_CRT_LIST_SORT}, 0U})
      if (gnutls_x509_crt_list_import2(&list, &size, &data, GNUTLS_X509_FMT_PEM, flag) >= 0)
        return size > 0;
    size = 0;
    return false;
  }

  gnutls_x509_crt_t* list = nullptr;
  unsigned size = 0;
};

using KeyId = std::array<unsigned char, 32>;

std::optional<KeyId> key_id_of(gnutls_x509_crt_t certificate) {
  KeyId id{};
  std::size_t size = id.size();
  if (gnutls_x509_crt_get_key_id(certificate, GNUTLS_KEYID_USE_SHA256, id.data(), &size) != 0)
    return std::nullopt;
  return id;
}

std::optional<KeyId> key_id_of(gnutls_privkey_t key) {
  gnutls_pubkey_t open = nullptr;
  if (gnutls_pubkey_init(&open) != 0) return std::nullopt;
  KeyId id{};
  std::size_t size = id.size();
  const bool done = gnutls_pubkey_import_privkey(open, key, 0, 0) == 0 &&
                    gnutls_pubkey_get_key_id(open, GNUTLS_KEYID_USE_SHA256, id.data(), &size) == 0;
  gnutls_pubkey_deinit(open);
  return done ? std::optional(id) : std::nullopt;
}

std::string text_of_address(const unsigned char* bytes, std::size_t size) {
  Address address;
  const bool is_v4 = size == 4;
  if (!is_v4 && size != address.bytes.size()) return "";
  if (is_v4) address.bytes[10] = address.bytes[11] = 0xff;
  std::copy(bytes, bytes + size, address.bytes.begin() + (is_v4 ? 12 : 0));
  return text_of(address);
}

// What is shown on the panel and in messages: no control characters of whoever made it.
std::string printable(std::string text) {
  for (char& letter : text)
    if (static_cast<unsigned char>(letter) < ' ' || static_cast<unsigned char>(letter) > '~')
      letter = '?';
  return text;
}

std::string common_name(gnutls_x509_crt_t leaf) {
  std::array<char, 256> name{};
  std::size_t size = name.size();
  if (gnutls_x509_crt_get_dn_by_oid(leaf, GNUTLS_OID_X520_COMMON_NAME, 0, 0, name.data(), &size) !=
      0)
    return "";
  return std::string(name.data(), size);
}

std::string names_of(gnutls_x509_crt_t leaf) {
  std::string names;
  for (unsigned i = 0; i < kMostNames; ++i) {
    std::array<unsigned char, 256> name{};
    std::size_t size = name.size();
    const int type = gnutls_x509_crt_get_subject_alt_name(leaf, i, name.data(), &size, nullptr);
    if (type < 0) break;
    std::string entry;
    if (type == GNUTLS_SAN_DNSNAME) entry.assign(name.begin(), name.begin() + size);
    if (type == GNUTLS_SAN_IPADDRESS) entry = text_of_address(name.data(), size);
    if (!entry.empty()) names += (names.empty() ? "" : ", ") + entry;
  }
  return printable(names.empty() ? common_name(leaf) : names);
}

std::string fingerprint_of(gnutls_x509_crt_t leaf) {
  std::array<unsigned char, 32> hash{};
  std::size_t size = hash.size();
  if (gnutls_x509_crt_get_fingerprint(leaf, GNUTLS_DIG_SHA256, hash.data(), &size) != 0) return "";
  std::string text;
  for (const unsigned char byte : hash) {
    std::array<char, 4> part{};
    std::snprintf(part.data(), part.size(), "%s%02X", text.empty() ? "" : ":", byte);
    text += part.data();
  }
  return text;
}

}  // namespace

TlsCertificate::Result TlsCertificate::read(const std::string& certificate,
                                            const std::string& key) {
  const std::shared_ptr<TlsCertificate> made(new TlsCertificate);
  Certificates certificates;
  if (!certificates.read(certificate) || certificates.size > kLongestChain)
    return "The certificate is not readable: it must be a text in PEM.";

  const gnutls_datum_t data = datum_of(key);
  if (gnutls_privkey_init(&made->key_) != 0) return "There is not enough memory.";
  const int read =
      gnutls_privkey_import_x509_raw(made->key_, &data, GNUTLS_X509_FMT_PEM, nullptr, 0);
  if (read == GNUTLS_E_DECRYPTION_FAILED)
    return "The key is protected by a password, which nobody could type at every start.";
  if (read != 0) return "The key is not readable: it must be a text in PEM.";
  const auto theirs = key_id_of(certificates.list[0]);
  if (!theirs || theirs != key_id_of(made->key_))
    return "The key does not belong to the certificate.";

  for (unsigned i = 0; i < certificates.size; ++i) {
    gnutls_pcert_st entry{};
    if (gnutls_pcert_import_x509(&entry, certificates.list[i], 0) != 0)
      return "The certificate is not readable: it must be a text in PEM.";
    made->chain_.push_back(entry);
  }
  made->describe(certificates.list[0]);
  return made;
}

TlsCertificate::~TlsCertificate() {
  for (gnutls_pcert_st& entry : chain_) gnutls_pcert_deinit(&entry);
  if (key_ != nullptr) gnutls_privkey_deinit(key_);
}

void TlsCertificate::describe(gnutls_x509_crt_t leaf) {
  names_ = names_of(leaf);
  fingerprint_ = fingerprint_of(leaf);
  from_ = std::chrono::system_clock::from_time_t(gnutls_x509_crt_get_activation_time(leaf));
  until_ = std::chrono::system_clock::from_time_t(gnutls_x509_crt_get_expiration_time(leaf));
}

std::string date_of(TlsCertificate::Time time) {
  using namespace std::chrono;
  const year_month_day date(floor<days>(time));
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", int{date.year()},
                unsigned{date.month()}, unsigned{date.day()});
  return text.data();
}

}  // namespace homewarden::http
