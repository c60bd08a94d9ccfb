#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/http/api_requests.h"
#include "platform/http/connections.h"
#include "platform/http/daemon.h"
#include "platform/http/document_folder.h"
#include "platform/http/gate.h"
#include "platform/http/http_limits.h"
#include "platform/http/page_responses.h"
#include "platform/http/requests.h"
#include "platform/http/response.h"
#include "platform/http/streams.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

// The server from start to stop: takes connections, judges their requests, keeps those that are
// admitted until they are answered. Whoever runs it asks for the next request, and may do so as
// soon as one has come.
class RunningServer : private DaemonEvents {
 public:
  // Builds the page for a refusal; may be none.
  using RefusalPages = std::function<std::string(const WebRefusal&)>;

  // `last_id` counts the requests of all runs, so that an id of an earlier run means none of this
  // one. `arrived` is called from within run() when a request has come: what it answers at once is
  // sent without holding the connection up. Throws std::runtime_error when the library cannot
  // start.
  RunningServer(const Clock& clock, WebHost& host, const HttpLimits& limits, GateRules rules,
                RefusalPages pages, DocumentFolder folder, Handle listening, int& last_id,
                std::function<void()> arrived);
  ~RunningServer() override;

  // Takes connections over TLS as well; with `hsts` browsers are told to come that way alone. `tls`
  // must outlive the server. False when the library cannot do it.
  bool listen_tls(Handle listening, Tls& tls, bool hsts);

  // One, or two with TLS.
  std::vector<int> descriptors() const;
  void run();
  bool has_more() const { return daemon_.has_more() || (tls_daemon_ && tls_daemon_->has_more()); }
  // Frees the port and takes nothing more, for a server that is stopped from within run() and can
  // go only after it.
  void retire();
  bool has_connections() const { return !connections_.empty(); }

  // Ends what takes too long and what nobody waits for any more. To be called about once a second.
  void look_around();

  // The next request to be handled, see Requests::next(). A switch that has waited is dropped when
  // its client has gone meanwhile.
  std::optional<int> next_request(std::size_t pages_at_once);
  bool has_request(std::size_t pages_at_once) const { return requests_.has_next(pages_at_once); }
  const Request* find(int id) const { return requests_.find(id); }
  bool is_awaited(int id) const;

  // True when there is something to send: run() sends it. False when the client has gone, or no
  // such request is handled.
  bool answer_page(int id, const std::string& html);
  bool answer_document(int id);

  // The same for requests of programs.
  std::optional<int> next_call() { return calls_.next(); }
  bool has_call() const { return calls_.has_next(); }
  const ApiRequest* find_call(int id) const { return calls_.find(id); }
  bool answer_call(int id, const ApiAnswer& answer);
  bool answer_stream(int id, std::shared_ptr<StreamSource> source);
  Streams& streams() { return streams_; }
  // Those that count from now on. What came with others ends. True as above.
  bool set_tokens(std::vector<ApiToken> tokens);

 private:
  bool admits(const sockaddr* from) override;
  Connection* opened(MHD_Connection* library, int socket, const sockaddr* from) override;
  void closed(Connection& connection) override;
  void line_read(Connection& connection, const char* uri) override;
  bool head_read(Connection& connection, MHD_Connection* library, const char* method,
                 const char* version) override;
  bool body_read(Connection& connection, std::string_view piece) override;
  bool request_read(Connection& connection) override;
  void completed(Connection& connection) override;

  std::optional<Refusal> take(Connection& connection);
  bool hand_over(Connection& connection);
  bool has_gone(int id) const;
  void drop_deserted_switches();
  bool send(Connection& connection, const Response& response);
  bool tells_hsts(const Connection& connection) const { return hsts_ && connection.tls; }
  Response with_hsts(const Connection& connection, Response response) const;
  Response answer_to(const Connection& connection, const Refusal& refusal) const;
  bool send_with_headers(Connection& connection, Response response);
  void give_up(Connection& connection);
  void cut(Connection& stream);
  void desert(Connection& connection);
  bool takes_body(const RequestHead& head) const;

  const Clock& clock_;
  WebHost& host_;
  const HttpLimits limits_;
  Gate gate_;
  const RefusalPages refusal_pages_;
  DocumentFolder folder_;
  int& last_id_;
  const std::function<void()> arrived_;
  bool retired_ = false;
  Connection* arriving_ = nullptr;  // the library waits for its answer and has not suspended it
  Connections connections_;
  Requests requests_;
  ApiRequests calls_;
  Streams streams_;
  PageResponses pages_;
  const Handle listening_;
  Handle tls_listening_;
  bool hsts_ = false;
  Daemon daemon_;  // last, with the other one: their end reports to the others
  std::optional<Daemon> tls_daemon_;
};

}  // namespace homewarden::http
