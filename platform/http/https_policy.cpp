#include "platform/http/https_policy.h"

#include "platform/http/host_name.h"

namespace homewarden::http {

std::optional<Refusal> HttpsPolicy::check(const RequestHead& head, const Asker& asker) const {
  const bool bares_secret = asker.logs_in && !asker.at_home && !plain_password;
  if (port.empty()) {
    if (!bares_secret) return std::nullopt;
    return Refusal{503,
                   "From outside the networks at home a password is taken over https only, which "
                   "this house cannot offer now: the panel \"Web Server\" says why."};
  }
  const bool sent =
      plain == WebHttps::Plain::kRedirect || (plain == WebHttps::Plain::kAtHome && !asker.at_home);
  if (sent || bares_secret) return sent_on(head, asker.own_host);
  return std::nullopt;
}

// Not for good, as 301 and 308 would be without the no-store of every refusal: the house may go
// back to HTTP. What is no GET keeps its method (RFC 9110, 15.4.9).
Refusal HttpsPolicy::sent_on(const RequestHead& head, bool own_host) const {
  const bool is_get = head.method == "GET" || head.method == "HEAD";
  auto host = own_host && head.host ? host_without_port(*head.host) : std::nullopt;
  if (!host) {
    const std::string called = text_of(head.called);
    host = called.find(':') == std::string::npos ? called : "[" + called + "]";
  }
  std::string to = "https://" + *host + (port == "443" ? "" : ":" + port);
  to += head.uri.starts_with('/') ? head.uri : "/";
  return {is_get ? 302U : 308U, "This house is answered over https.", "Location", std::move(to)};
}

}  // namespace homewarden::http
