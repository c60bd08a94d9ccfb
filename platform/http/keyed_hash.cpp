#include "platform/http/keyed_hash.h"

#include <gnutls/crypto.h>
#include <gnutls/gnutls.h>

#include <stdexcept>

namespace homewarden::http {

std::string keyed_hash(std::string_view key, std::string_view text) {
  std::string hash(gnutls_hmac_get_len(GNUTLS_MAC_SHA256), '\0');
  if (gnutls_hmac_fast(GNUTLS_MAC_SHA256, key.data(), key.size(), text.data(), text.size(),
                       hash.data()) != 0)
    throw std::runtime_error("the library cannot compute a keyed hash");
  return hash;
}

std::string hash_of(std::string_view text) {
  std::string hash(gnutls_hash_get_len(GNUTLS_DIG_SHA256), '\0');
  if (gnutls_hash_fast(GNUTLS_DIG_SHA256, text.data(), text.size(), hash.data()) != 0)
    throw std::runtime_error("the library cannot compute a hash");
  return hash;
}

std::string hex_of(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    text.append({kDigits[code / 16U], kDigits[code % 16U]});
  }
  return text;
}

std::string base64_of(std::string_view bytes) {
  std::string copy(bytes);
  const gnutls_datum_t data{reinterpret_cast<unsigned char*>(copy.data()),
                            static_cast<unsigned>(copy.size())};
  gnutls_datum_t encoded{};
  if (gnutls_base64_encode2(&data, &encoded) != 0)
    throw std::runtime_error("the library cannot encode");
  std::string text(reinterpret_cast<const char*>(encoded.data), encoded.size);
  gnutls_free(encoded.data);
  return text;
}

std::string random_bytes(std::size_t count) {
  std::string bytes(count, '\0');
  if (gnutls_rnd(GNUTLS_RND_KEY, bytes.data(), bytes.size()) != 0)
    throw std::runtime_error("the system has no random numbers");
  return bytes;
}

bool same_in_constant_time(std::string_view a, std::string_view b) {
  return a.size() == b.size() && gnutls_memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace homewarden::http
