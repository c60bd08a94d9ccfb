#include "platform/http/https_service.h"

#include <tuple>
#include <utility>

#include "base/text.h"
#include "platform/http/address.h"

namespace homewarden::http {
namespace {

TlsCertificate::Time now() {
  return std::chrono::system_clock::now();
}

auto shown(const WebHttpsState& state) {
  return std::tie(state.listening, state.trouble, state.names, state.until, state.fingerprint);
}

}  // namespace

HttpsService::HttpsService(EventLoop& loop, WebHost& host, const HttpLimits& limits,
                           std::function<void()> changed)
    : loop_(loop),
      host_(host),
      address_(limits.address),
      between_looks_(limits.certificates),
      changed_(std::move(changed)),
      tls_{host} {}

HttpsService::~HttpsService() {
  HttpsService::end();
}

Handle HttpsService::begin(const std::string& plain_port) {
  end();
  running_ = wanted_;
  if (!running_.on) return {};
  running_.port = trim_blanks(running_.port);
  files_.emplace(host_.files(), running_.certificate, running_.key);
  files_->look(now());
  tls_.certificate = files_->current();
  look_later();
  const auto port = parse_port(running_.port);
  const bool is_own = port && port != parse_port(plain_port);
  Handle socket = tls_.certificate && is_own ? host_.listen(address_, *port) : Handle();
  if (!tls_.certificate)
    failure_ = "There is no https: " + files_->trouble(now());
  else if (!socket.is_open())
    failure_ = "There is no https: port " + running_.port + " cannot be used.";
  listening_ = socket.is_open();
  return socket;
}

void HttpsService::fail(std::string trouble) {
  listening_ = false;
  failure_ = std::move(trouble);
}

void HttpsService::end() {
  loop_.cancel(std::exchange(next_look_, 0));
  running_ = {};
  listening_ = false;
  failure_.clear();
  files_.reset();
  tls_.certificate.reset();
}

std::optional<HttpsPolicy> HttpsService::policy() const {
  if (!running_.on) return std::nullopt;
  return HttpsPolicy{listening_ ? running_.port : "", running_.plain, running_.plain_password};
}

WebHttpsState HttpsService::state() const {
  WebHttpsState state;
  state.listening = listening_;
  state.trouble = failure_;
  if (!files_) return state;
  if (failure_.empty()) state.trouble = files_->trouble(now());
  if (const auto& certificate = files_->current()) {
    state.names = certificate->names();
    state.until = date_of(certificate->until());
    state.fingerprint = certificate->fingerprint();
  }
  return state;
}

std::string HttpsService::fault(const WebHttps& https) const {
  if (!parse_port(https.port)) return "The port must be a number from 1 to 65535.";
  CertificateFiles files(host_.files(), https.certificate, https.key);
  files.look(now());
  return files.current() ? "" : files.trouble(now());
}

void HttpsService::look_later() {
  next_look_ = loop_.call_after(between_looks_, [this] {
    next_look_ = 0;
    look();
  });
}

// What is wrong with time changes while the files stay as they are.
void HttpsService::look() {
  look_later();
  if (!listening_) return;
  files_->look(now());
  tls_.certificate = files_->current();
  WebHttpsState state = this->state();
  if (shown(state) == shown(told_)) return;
  told_ = std::move(state);
  changed_();
}

}  // namespace homewarden::http
