#include "platform/http/running_server.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/http/api_form.h"
#include "platform/http/api_path.h"

namespace homewarden::http {

using Phase = Connection::Phase;

namespace {

constexpr const char* kHstsHeader = "Strict-Transport-Security";
constexpr const char* kHsts = "max-age=31536000";  // a year

bool is_page(const std::string& page) {
  return page.empty() || media_type(page).starts_with("text/html");
}

// Each address has its turn before one of them has another.
Refusal crowded(const Request& request, std::size_t addresses, std::string again) {
  constexpr std::size_t kSecondsOfASwitch = 2;
  const std::string seconds =
      std::to_string(kSecondsOfASwitch * std::max<std::size_t>(addresses, 1));
  Refusal refusal{429, "", "Retry-After", seconds, std::move(again)};
  refusal.reason =
      request.switches
          ? "Too many presses are waiting for the power line already. This one was not taken; "
            "please press again when the others are done."
          : "Too many pages are waiting for what is being switched. Please try again in a moment.";
  return refusal;
}

}  // namespace

RunningServer::RunningServer(const Clock& clock, WebHost& host, const HttpLimits& limits,
                             GateRules rules, RefusalPages pages, DocumentFolder folder,
                             Handle listening, int& last_id, std::function<void()> arrived)
    : clock_(clock),
      host_(host),
      limits_(limits),
      gate_(std::move(rules)),
      refusal_pages_(std::move(pages)),
      folder_(std::move(folder)),
      last_id_(last_id),
      arrived_(std::move(arrived)),
      connections_(host, limits, gate_.proxies()),
      requests_(limits, connections_.largest() / 3),
      calls_(limits),
      streams_(clock, host, limits, connections_.largest()),
      listening_(std::move(listening)),
      daemon_(*this, host.duplicate(listening_), connections_.most_sockets()) {}

RunningServer::~RunningServer() {
  for (Connection* connection : connections_.handled()) give_up(*connection);
}

bool RunningServer::listen_tls(Handle listening, Tls& tls, bool hsts) {
  tls_listening_ = std::move(listening);
  hsts_ = hsts;
  DaemonEvents& events = *this;
  try {
    tls_daemon_.emplace(events, host_.duplicate(tls_listening_), connections_.most_sockets(), &tls);
  } catch (const std::exception&) {
    tls_listening_ = Handle();
    return false;
  }
  return true;
}

std::vector<int> RunningServer::descriptors() const {
  std::vector<int> all{daemon_.descriptor()};
  if (tls_daemon_) all.push_back(tls_daemon_->descriptor());
  return all;
}

void RunningServer::run() {
  daemon_.run();
  if (tls_daemon_) tls_daemon_->run();
}

void RunningServer::retire() {
  retired_ = true;
  streams_.give_up_all();
  host_.shut_down(listening_.get());
  if (tls_listening_.is_open()) host_.shut_down(tls_listening_.get());
}

void RunningServer::look_around() {
  connections_.cut_late(clock_.uptime());
  for (Connection* connection : connections_.deserted()) give_up(*connection);
  for (Connection* stream : streams_.look_around()) cut(*stream);
}

// The library goes on with the connection and is told in request_read() that it ends.
void RunningServer::give_up(Connection& connection) {
  const bool is_stream = connection.phase == Phase::kStreaming;
  desert(connection);
  connection.phase = Phase::kClosing;
  if (is_stream)
    streams_.give_up(connection);
  else if (&connection != arriving_)
    MHD_resume_connection(connection.library);
}

void RunningServer::desert(Connection& connection) {
  const int id = std::exchange(connection.request, 0);
  requests_.desert(id);
  calls_.desert(id);
}

bool RunningServer::has_gone(int id) const {
  const Request* request = requests_.find(id);
  const Connection* connection = request != nullptr ? request->connection : nullptr;
  return connection == nullptr || host_.hung_up({connection->socket}).front();
}

bool RunningServer::is_awaited(int id) const {
  const std::vector<int> askers = requests_.askers(id);
  return !std::all_of(askers.begin(), askers.end(), [this](int asker) { return has_gone(asker); });
}

std::optional<int> RunningServer::next_request(std::size_t pages_at_once) {
  drop_deserted_switches();
  return requests_.next(pages_at_once);
}

// Those whose turn it is, until one is found that somebody waits for.
void RunningServer::drop_deserted_switches() {
  std::size_t waiting = 0;
  std::vector<int> due = requests_.due_after_waiting();
  while (waiting == 0 && !due.empty()) {
    for (const int id : due) {
      if (has_gone(id))
        give_up(*requests_.find(id)->connection);
      else
        ++waiting;
    }
    due = requests_.due_after_waiting();
  }
}

bool RunningServer::answer_page(int id, const std::string& html) {
  Connection* connection = requests_.finish(id);
  if (connection == nullptr) return false;
  // What is kept is sent to everybody, and must not have a cookie of one browser.
  if (connection->admission.headers.empty())
    return send(*connection, pages_.of(html, [this] { return folder_.policy_of_pages(); }));
  return send_with_headers(*connection, Response::page(html, folder_.policy_of_pages()));
}

bool RunningServer::answer_document(int id) {
  const Request* request = requests_.find(id);
  if (request == nullptr) return false;
  const std::string page = request->page;
  // The home page in place of a template that nobody has put anything into.
  const bool is_home = !request->query.empty() && (page.empty() || is_template(page));
  Connection* connection = requests_.finish(id);
  if (connection == nullptr) return false;
  if (is_home)
    return send_with_headers(*connection, Response::redirect(page.empty() ? "./" : page));
  auto document = folder_.open(page);
  if (!document) return send(*connection, answer_to(*connection, {404, "There is no such page."}));
  return send_with_headers(*connection, Response::document(std::move(*document), connection->head));
}

bool RunningServer::answer_call(int id, const ApiAnswer& answer) {
  Connection* connection = calls_.finish(id);
  return connection != nullptr && send_with_headers(*connection, Response::program(answer));
}

bool RunningServer::answer_stream(int id, std::shared_ptr<StreamSource> source) {
  Connection* connection = calls_.finish(id);
  if (connection == nullptr) return false;
  if (const auto refusal = streams_.too_many(connection->admission.from))
    return send(*connection, answer_to(*connection, *refusal));
  Stream& stream = streams_.begin(*connection, std::move(source));
  send_with_headers(*connection, Response::stream(stream));
  if (connection->phase == Phase::kClosing || connection->head.method == "HEAD")
    stream.give_up();  // nothing will be read of it
  else
    connection->phase = Phase::kStreaming;
  return true;
}

bool RunningServer::set_tokens(std::vector<ApiToken> tokens) {
  gate_.tokens().set(std::move(tokens));
  bool has_to_send = false;
  for (Connection* connection : connections_.handled()) {
    const std::string& token = connection->admission.token;
    if (token.empty() || gate_.tokens().knows(token)) continue;
    has_to_send = true;
    if (connection->phase == Phase::kStreaming)
      cut(*connection);
    else if (calls_.finish(connection->request) != nullptr)
      send(*connection, answer_to(*connection, unknown_token()));
  }
  return has_to_send;
}

void RunningServer::cut(Connection& stream) {
  connections_.cut(stream);
  streams_.give_up(stream);
}

bool RunningServer::send_with_headers(Connection& connection, Response response) {
  for (const auto& [name, value] : connection.admission.headers) response.header(name, value);
  return send(connection, response);
}

// A browser that was refused its login asks for another one; the rest it shows.
Response RunningServer::answer_to(const Connection& connection, const Refusal& refusal) const {
  constexpr unsigned kFirstOfErrors = 400;
  constexpr unsigned kUnauthorized = 401;
  if (is_for_programs(connection.head.path())) {
    Response problem = Response::problem(refusal);
    for (const auto& [name, value] : gate_.cross_origin(connection.head))
      problem.header(name, value);
    return with_hsts(connection, std::move(problem));
  }
  if (!refusal_pages_ || !connection.head.takes_html || refusal.status < kFirstOfErrors ||
      refusal.status == kUnauthorized)
    return with_hsts(connection, Response::refusal(refusal));
  const std::string page = refusal_pages_(
      WebRefusal{refusal.status, refusal.reason, refusal.again, connection.head.uri});
  return with_hsts(connection, Response::refusal(refusal, page));
}

// RFC 6797: not without TLS, where anybody could have put it in.
Response RunningServer::with_hsts(const Connection& connection, Response response) const {
  if (tells_hsts(connection)) response.header(kHstsHeader, kHsts);
  return response;
}

bool RunningServer::send(Connection& connection, const Response& response) {
  connection.request = 0;
  connection.since = clock_.uptime();
  connection.phase = response.queue_on(connection.library) ? Phase::kSending : Phase::kClosing;
  if (&connection != arriving_) MHD_resume_connection(connection.library);
  return true;
}

bool RunningServer::admits(const sockaddr* from) {
  return connections_.admits(host_.address_of(from), clock_.uptime());
}

Connection* RunningServer::opened(MHD_Connection* library, int socket, const sockaddr* from) {
  return &connections_.open(library, socket, host_.address_of(from), clock_.uptime());
}

void RunningServer::closed(Connection& connection) {
  completed(connection);
  connections_.close(connection);
}

void RunningServer::line_read(Connection& connection, const char* uri) {
  connection.uri = uri;
  if (connection.phase != Phase::kIdle) return;
  connection.phase = Phase::kHead;
  connection.since = clock_.uptime();
}

bool RunningServer::head_read(Connection& connection, MHD_Connection* library, const char* method,
                              const char* version) {
  if (connection.phase == Phase::kClosing) return false;
  connection.head = read_head(library, method, version);
  set_target(connection.head, std::move(connection.uri));
  connection.head.from = connection.from;
  connection.head.from_here = connection.from_here;
  connection.head.called = connection.called;
  connection.head.https = connection.tls != nullptr;
  auto verdict = gate_.check(connection.head, clock_);
  if (auto* admission = std::get_if<Admission>(&verdict)) {
    connection.admission = std::move(*admission);
    if (tells_hsts(connection)) connection.admission.headers.emplace_back(kHstsHeader, kHsts);
    if (connection.admission.call)
      connection.refusal = calls_.too_often(connection.admission.from, clock_.uptime());
  } else {
    connection.refusal = std::get<Refusal>(std::move(verdict));
  }
  // An answer before the body has come makes the library close the connection after it.
  return !connection.refusal || takes_body(connection.head) ||
         answer_to(connection, *connection.refusal).queue_on(library);
}

// Whether the body of a request that is refused is taken all the same: many clients read their
// answer only when they have sent it all.
bool RunningServer::takes_body(const RequestHead& head) const {
  return !head.has_body ||
         (is_for_programs(head.path()) && head.body_size.value_or(0) <= limits_.refused_body);
}

bool RunningServer::body_read(Connection& connection, std::string_view piece) {
  if (connection.phase == Phase::kClosing) return false;
  if (!connection.refusal && connection.body.size() + piece.size() > kLargestApiBody) {
    connection.refusal = too_large();
    connection.body = std::string();
  }
  if (connection.refusal)
    connection.refused_body += piece.size();
  else
    connection.body.append(piece);
  return connection.refused_body <= limits_.refused_body;
}

bool RunningServer::request_read(Connection& connection) {
  if (connection.phase == Phase::kClosing || retired_) return false;
  if (!connection.refusal) connection.refusal = take(connection);
  if (!connection.refusal) return hand_over(connection);
  connection.phase = Phase::kSending;
  connection.since = clock_.uptime();
  return answer_to(connection, *connection.refusal).queue_on(connection.library);
}

// Gives the request an id and puts it among those that wait, if there is room.
std::optional<Refusal> RunningServer::take(Connection& connection) {
  Admission& admission = connection.admission;
  const int id = last_id_ == std::numeric_limits<int>::max() ? 1 : last_id_ + 1;
  if (admission.call) {
    if (!admission.token.empty() && !gate_.tokens().knows(admission.token)) return unknown_token();
    if (auto refusal = calls_.too_many(admission.from)) return refusal;
    admission.call->body = std::move(connection.body);
    calls_.add(id, connection, admission.from, std::move(*admission.call));
  } else {
    Request request{&connection,
                    admission.from,
                    std::move(admission.page),
                    std::move(admission.query),
                    std::move(admission.switches),
                    admission.nameless};
    request.shows_states = is_page(request.page);
    if (!requests_.room_for(request))
      return crowded(request, requests_.addresses_in_line(), connection.head.uri);
    requests_.add(id, std::move(request));
  }
  last_id_ = id;
  connection.request = id;
  return std::nullopt;
}

// Answered at once, or held until it is.
bool RunningServer::hand_over(Connection& connection) {
  connection.phase = Phase::kHandling;
  arriving_ = &connection;
  arrived_();
  arriving_ = nullptr;
  if (retired_) connection.phase = Phase::kClosing;
  if (connection.phase == Phase::kHandling) MHD_suspend_connection(connection.library);
  return connection.phase != Phase::kClosing;
}

void RunningServer::completed(Connection& connection) {
  desert(connection);
  streams_.end(connection);
  connection.refusal.reset();
  connection.body = std::string();
  connection.refused_body = 0;
  if (connection.phase == Phase::kClosing) return;
  connection.phase = Phase::kIdle;
  connection.since = clock_.uptime();
}

}  // namespace homewarden::http
