#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <string_view>

#include "base/text.h"
#include "platform/http/daemon.h"

namespace homewarden::http {
namespace {

struct KnownHeader {
  std::string_view name;
  std::optional<std::string> RequestHead::*value;
};

constexpr std::array<KnownHeader, 13> kKnownHeaders{{
    {"Host", &RequestHead::host},
    {"Authorization", &RequestHead::authorization},
    {"Origin", &RequestHead::origin},
    {"Referer", &RequestHead::referer},
    {"Sec-Fetch-Site", &RequestHead::fetch_site},
    {"Sec-Fetch-Mode", &RequestHead::fetch_mode},
    {"Sec-Fetch-Dest", &RequestHead::fetch_dest},
    {"User-Agent", &RequestHead::user_agent},
    {"If-None-Match", &RequestHead::if_none_match},
    {"If-Modified-Since", &RequestHead::if_modified_since},
    {"Content-Type", &RequestHead::content_type},
    {"Last-Event-ID", &RequestHead::last_event_id},
    {"Access-Control-Request-Method", &RequestHead::asked_method},
}};

bool tells_purpose(std::string_view name) {
  constexpr std::array<std::string_view, 4> kNames{"Sec-Purpose", "Purpose", "X-Purpose", "X-Moz"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [&](std::string_view purpose) { return equals_ignoring_case(name, purpose); });
}

// The library has refused what is no number.
void read_size(std::string_view text, RequestHead& head) {
  const std::string_view digits = trim_blanks(text);
  std::uint64_t size = 0;
  const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), size).ec;
  head.body_size = error == std::errc() ? size : std::numeric_limits<std::uint64_t>::max();
  head.has_body = head.has_body || head.body_size != 0U;
}

MHD_Result on_header(void* to, MHD_ValueKind, const char* name, std::size_t name_size,
                     const char* value, std::size_t value_size) {
  auto& head = *static_cast<RequestHead*>(to);
  const std::string_view given(name, name_size);
  const std::string_view text(value == nullptr ? "" : value, value_size);
  for (const auto& known : kKnownHeaders) {
    if (!equals_ignoring_case(given, known.name)) continue;
    head.repeats = head.repeats || (head.*known.value).has_value();
    head.*known.value = std::string(text);
  }
  if (equals_ignoring_case(given, "Cookie")) head.cookies.append(text).append(";");
  if (equals_ignoring_case(given, "Accept") && contains_ignoring_case(text, "text/html"))
    head.takes_html = true;
  if (tells_purpose(given) &&
      (contains_ignoring_case(text, "prefetch") || contains_ignoring_case(text, "preview")))
    head.in_advance = true;
  head.forwarded.take(given, text);
  const bool in_chunks = equals_ignoring_case(given, "Transfer-Encoding");
  if (!in_chunks && !equals_ignoring_case(given, "Content-Length")) return MHD_YES;
  // A proxy might take another end of the body for the right one (RFC 9112, 6.3).
  head.repeats = head.repeats || head.tells_size;
  head.tells_size = true;
  if (in_chunks)
    head.has_body = true;
  else
    read_size(text, head);
  return MHD_YES;
}

}  // namespace

RequestHead read_head(MHD_Connection* library, const char* method, const char* version) {
  RequestHead head;
  head.method = method;
  head.needs_host = std::strcmp(version, MHD_HTTP_VERSION_1_0) != 0;
  MHD_get_connection_values_n(library, MHD_HEADER_KIND, &on_header, &head);
  return head;
}

}  // namespace homewarden::http
