#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/http/address.h"
#include "platform/http/forwarded.h"

namespace homewarden::http {

// What is known of a request when its head has been read. Header values are as they were sent;
// nothing for a header that was not.
struct RequestHead {
  Address from;
  bool from_here = false;  // of the same machine, whatever its address
  Address called;          // of this machine, as the client of the connection called it
  bool https = false;      // it came over TLS
  std::string method;
  std::string uri;  // the path and what follows it, as it was sent
  bool needs_host = true;
  bool has_body = false;
  std::optional<std::uint64_t> body_size{};  // nothing when it was not announced
  bool takes_html = false;   // as browsers do for what they show; programs hardly say so
  bool in_advance = false;   // nobody has asked for the answer yet: a browser guesses, or previews
  bool repeats = false;      // one of the headers below came twice, or the size of the body
  bool tells_size = false;   // of the body: a number of bytes, or pieces
  bool is_absolute = false;  // the target named a host, which took the place of the header's
  std::optional<std::string> host;
  std::optional<std::string> authorization;
  std::optional<std::string> origin;
  std::optional<std::string> referer;
  std::optional<std::string> fetch_site;
  std::optional<std::string> fetch_mode;
  std::optional<std::string> fetch_dest;
  std::optional<std::string> user_agent;
  std::optional<std::string> if_none_match;
  std::optional<std::string> if_modified_since;
  std::optional<std::string> content_type;
  std::optional<std::string> last_event_id;
  std::optional<std::string> asked_method;  // Access-Control-Request-Method
  std::string cookies;  // of all Cookie headers, of which there may be several; each ends in ";"
  ForwardedHeaders forwarded;

  // What stands before and behind the first "?", not decoded; "" when nothing does. They point into
  // `uri`.
  std::string_view path() const { return std::string_view(uri).substr(0, uri.find('?')); }
  std::string_view query() const {
    const auto mark = uri.find('?');
    return mark == std::string::npos ? "" : std::string_view(uri).substr(mark + 1);
  }
};

// Takes the target of the request's first line. One in absolute form ("http://host/index.html?x")
// gives its host in place of the header's; only what follows the host becomes the `uri`.
void set_target(RequestHead& head, std::string target);

}  // namespace homewarden::http
