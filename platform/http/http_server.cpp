#include "platform/http/http_server.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/flag_guard.h"
#include "platform/http/access_rules.h"
#include "platform/http/address.h"
#include "platform/http/self_signed_files.h"

namespace homewarden::http {

using std::chrono::milliseconds;

namespace {

// Rounds of reading and answering, and the time after which no more requests are handed over,
// before the rest of the program has its turn.
constexpr int kRounds = 8;
constexpr milliseconds kPatience{5};

}  // namespace

HttpServer::HttpServer(EventLoop& loop, WebHost& host, const WatchReadable& watch,
                       HttpLimits limits)
    : loop_(loop),
      host_(host),
      limits_(std::move(limits)),
      https_(loop, host, limits_, [this] { HttpsStateChanged(); }),
      watched_(host.socket_set()),
      self_(std::make_shared<HttpServer*>(this)) {
  watch(watched_->descriptor(), [self = std::weak_ptr(self_)] {
    if (const auto server = self.lock()) (*server)->turn();
  });
}

HttpServer::~HttpServer() {
  HttpServer::StopListening();
}

void HttpServer::servermaxconnections(int requests) {
  pages_at_once_ = static_cast<std::size_t>(std::max(requests, 1));
}

void HttpServer::RefusalPages(std::function<std::string(const WebRefusal&)> pages) {
  refusal_pages_ = std::move(pages);
}

std::vector<std::string> HttpServer::AccessFaults(const WebAccess& access) const {
  return read_access(access).faults;
}

std::vector<std::string> HttpServer::Addresses() const {
  // Whoever names an address to listen on knows how it is reached.
  return limits_.address.empty() ? host_.network_addresses() : std::vector<std::string>();
}

void HttpServer::StartListening() {
  if (Listening()) return;
  const auto port = parse_port(port_);
  if (!port) return;
  Handle listening = host_.listen(limits_.address, *port);
  if (!listening.is_open()) return;

  http::DocumentFolder folder(host_.folder(folder_));
  Handle tls = https_.begin(port_);
  try {
    server_ =
        std::make_unique<RunningServer>(loop_, host_, limits_, rules(folder), refusal_pages_,
                                        std::move(folder), std::move(listening), last_id_, [this] {
                                          if (in_turn_) hand_over();
                                        });
  } catch (const std::exception&) {
    https_.end();
    return;  // Listening() tells
  }
  if (tls.is_open() && !server_->listen_tls(std::move(tls), https_.tls(), https_.hsts()))
    https_.fail("There is no https: the HTTP library does not start it.");
  if (!watch_all()) StopListening();
}

bool HttpServer::watch_all() {
  const std::vector<int> all = server_->descriptors();
  return std::all_of(all.begin(), all.end(), [this](int socket) { return watched_->add(socket); });
}

GateRules HttpServer::rules(http::DocumentFolder& folder) {
  AccessRules access = read_access(access_);
  GateRules rules;
  has_logins_ = false;
  if (log_in_) {
    const std::string passwords = folder.passwords();
    Credentials credentials(passwords);
    has_logins_ = !credentials.empty();
    rules.log_in.emplace(std::move(credentials), LoginCookies(folder.key(), passwords));
  }
  rules.https = https_.policy();
  rules.home = HomeNetworks([this] { return host_.on_link_prefixes(); }, access_.shared_addresses);
  rules.proxies = std::move(access.proxies);
  rules.own_names = host_.machine_names();
  rules.names = std::move(access.hosts);
  rules.origins = std::move(access.origins);
  rules.switches = switches_;
  rules.state_pages = state_pages_;
  rules.tokens = tokens_;
  return rules;
}

bool HttpServer::StopListening() {
  loop_.cancel(std::exchange(next_turn_, 0));
  loop_.cancel(std::exchange(next_look_, 0));
  if (!server_) return false;
  for (const int descriptor : server_->descriptors()) watched_->remove(descriptor);
  if (running_ == server_.get()) {
    server_->retire();
    stopped_ = std::move(server_);
  }
  server_.reset();
  https_.end();
  return true;
}

std::string HttpServer::QueryText(int request, const std::string&) {
  const Request* found = server_ ? server_->find(request) : nullptr;
  return found != nullptr ? found->query : "";
}

std::string HttpServer::ClientAddress(int request) const {
  const Request* found = server_ ? server_->find(request) : nullptr;
  return found != nullptr ? text_of(found->from) : "";
}

bool HttpServer::UnderForeignName(int request) const {
  const Request* found = server_ ? server_->find(request) : nullptr;
  return found != nullptr && found->nameless;
}

void HttpServer::SendPage(int request, const std::string& page, bool serve_file) {
  if (!server_) return;
  answered(serve_file ? server_->answer_document(request) : server_->answer_page(request, page));
}

void HttpServer::SendAnswer(int request, const ApiAnswer& answer) {
  if (server_) answered(server_->answer_call(request, answer));
}

void HttpServer::SendStream(int request, std::shared_ptr<StreamSource> source) {
  if (server_) answered(server_->answer_stream(request, std::move(source)));
}

// Also when its client has gone there is room for another request now.
void HttpServer::answered(bool has_to_send) {
  if (in_turn_ || running_ != nullptr) {
    answered_ = answered_ || has_to_send;
    return;
  }
  if (has_to_send) run();
  arm();
}

void HttpServer::StreamsHaveMore() {
  if (!server_ || server_->streams().empty()) return;
  server_->streams().have_more();
  if (!in_turn_ && running_ == nullptr) arm();
}

void HttpServer::Tokens(std::vector<ApiToken> tokens) {
  tokens_ = std::move(tokens);
  if (server_) answered(server_->set_tokens(tokens_));
}

NewToken HttpServer::new_token() {
  return make_token();
}

std::string HttpServer::make_certificate(const std::filesystem::path& certificate,
                                         const std::filesystem::path& key, int days) {
  return write_self_signed(host_, certificate, key, days);
}

void HttpServer::turn() {
  if (!server_ || in_turn_) return;
  {
    const FlagGuard guard(in_turn_);
    turn_start_ = loop_.uptime();
    tell_streams();
    answered_ = true;
    for (int rounds = 0; server_ && answered_ && rounds < kRounds; ++rounds) {
      if (rounds > 0 && !has_patience()) break;
      answered_ = false;
      run();
      hand_over();
    }
    if (server_ && answered_) run();
  }
  arm();
}

void HttpServer::run() {
  with_running([](RunningServer& server) { server.run(); });
}

void HttpServer::tell_streams() {
  Streams& streams = server_->streams();
  if (!streams.has_to_tell() || streams.pause() > milliseconds(0)) return;
  with_running(
      [this](RunningServer& server) { server.streams().tell([this] { return has_patience(); }); });
}

// One that is stopped meanwhile goes only afterwards.
void HttpServer::with_running(const std::function<void(RunningServer&)>& function) {
  running_ = server_.get();
  function(*running_);
  running_ = nullptr;
  stopped_.reset();
}

bool HttpServer::has_patience() const {
  return loop_.uptime() - turn_start_ < kPatience;
}

// Whoever is told of a request may answer it at once, and may stop or start the server.
void HttpServer::hand_over() {
  bool has_more = true;
  while (has_more && server_ && has_patience()) {
    const bool was_call = hand_over_call();
    const bool was_page = server_ && hand_over_page();
    has_more = was_call || was_page;
  }
}

bool HttpServer::hand_over_page() {
  const auto id = server_->next_request(pages_at_once_);
  if (!id) return false;
  const std::string page = server_->find(*id)->page;
  RequestArrived(*id, page);
  return true;
}

bool HttpServer::hand_over_call() {
  const auto id = server_->next_call();
  if (!id) return false;
  const ApiRequest call = *server_->find_call(*id);
  ApiRequestArrived(*id, call);
  return true;
}

void HttpServer::arm() {
  if (!server_) return;
  if (server_->has_more() || server_->has_request(pages_at_once_) || server_->has_call())
    turn_soon(milliseconds(0));
  else if (server_->streams().has_to_tell())
    turn_soon(server_->streams().pause());
  if (next_look_ == 0 && server_->has_connections())
    next_look_ = loop_.call_after(limits_.look_around, [this] { look_around(); });
}

void HttpServer::turn_soon(milliseconds delay) {
  if (next_turn_ != 0 && next_turn_delay_ <= delay) return;
  loop_.cancel(next_turn_);
  next_turn_delay_ = delay;
  next_turn_ = loop_.call_after(delay, [this] {
    next_turn_ = 0;
    turn();
  });
}

void HttpServer::look_around() {
  next_look_ = 0;
  server_->look_around();
  turn();  // also ends what the library gave up while there was nothing to tell it of
}

}  // namespace homewarden::http
