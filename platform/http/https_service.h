#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/event_loop.h"
#include "platform/http/certificate_files.h"
#include "platform/http/http_limits.h"
#include "platform/http/https_policy.h"
#include "platform/http/tls_transport.h"
#include "platform/web_host.h"
#include "platform/web_https.h"

namespace homewarden::http {

// What a server has of TLS: its port, the certificate that it shows and that is renewed while it
// runs, and what a person is told of it.
class HttpsService {
 public:
  // `changed` is called from the event loop when state() has changed since begin().
  HttpsService(EventLoop& loop, WebHost& host, const HttpLimits& limits,
               std::function<void()> changed);
  HttpsService(const HttpsService&) = delete;
  HttpsService& operator=(const HttpsService&) = delete;
  ~HttpsService();

  // For the next begin().
  void settings(WebHttps https) { wanted_ = std::move(https); }
  // The socket that TLS is to be spoken on; not open when it is not wanted or cannot be had.
  Handle begin(const std::string& plain_port);
  // There is no TLS after all.
  void fail(std::string trouble);
  void end();

  // Nothing while TLS is not wanted.
  std::optional<HttpsPolicy> policy() const;
  // Whether answers over TLS tell browsers to come that way alone.
  bool hsts() const { return running_.hsts; }
  WebHttpsState state() const;
  // See WebServerControl::HttpsFault().
  std::string fault(const WebHttps& https) const;
  Tls& tls() { return tls_; }

 private:
  void look();
  void look_later();

  EventLoop& loop_;
  WebHost& host_;
  const std::string address_;
  const std::chrono::milliseconds between_looks_;
  const std::function<void()> changed_;
  WebHttps wanted_;
  WebHttps running_;  // as of begin()
  bool listening_ = false;
  std::string failure_;  // why it is not
  WebHttpsState told_;
  std::optional<CertificateFiles> files_;
  Tls tls_;
  EventLoop::CallId next_look_ = 0;
};

}  // namespace homewarden::http
