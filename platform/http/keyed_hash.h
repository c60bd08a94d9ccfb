#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace homewarden::http {

// HMAC-SHA-256: 32 bytes that nobody can compute or check without the key.
std::string keyed_hash(std::string_view key, std::string_view text);

// SHA-256: 32 bytes.
std::string hash_of(std::string_view text);

// Two digits for each byte, in lower case.
std::string hex_of(std::string_view bytes);

// With padding, on one line.
std::string base64_of(std::string_view bytes);

// Bytes that nobody can foretell. Throws std::runtime_error when the system has none.
std::string random_bytes(std::size_t count);

// How long it takes tells nothing of where two texts of one length differ.
bool same_in_constant_time(std::string_view a, std::string_view b);

}  // namespace homewarden::http
