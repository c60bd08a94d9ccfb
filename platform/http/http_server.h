#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/http/http_limits.h"
#include "platform/http/https_service.h"
#include "platform/http/running_server.h"
#include "platform/web_host.h"
#include "platform/web_server_control.h"

namespace homewarden::http {

// The web server on the program's event loop.
class HttpServer : public WebServerControl {
 public:
  // Calls the function whenever the descriptor can be read, from the event loop and until the
  // descriptor is closed.
  using WatchReadable = std::function<void(int descriptor, std::function<void()> function)>;

  HttpServer(EventLoop& loop, WebHost& host, const WatchReadable& watch, HttpLimits limits = {});
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;
  ~HttpServer() override;

  bool Listening() const override { return server_ != nullptr; }
  void ServerPort(const std::string& port) override { port_ = port; }
  void DocumentFolder(const std::filesystem::path& folder) override { folder_ = folder; }
  void AuthenticationMode(int mode) override { log_in_ = mode != 0; }
  void ServerOption(bool) override {}
  void servermaxconnections(int requests) override;
  void SwitchRequests(SwitchTest test) override { switches_ = std::move(test); }
  void StatePages(StateTest test) override { state_pages_ = std::move(test); }
  void RefusalPages(std::function<std::string(const WebRefusal&)> pages) override;
  void Access(WebAccess access) override { access_ = std::move(access); }
  std::vector<std::string> AccessFaults(const WebAccess& access) const override;
  std::vector<std::string> Addresses() const override;
  bool HasLogins() const override { return has_logins_; }
  void StartListening() override;
  bool StopListening() override;
  std::string QueryText(int request, const std::string& unused) override;
  bool IsAwaited(int request) override { return server_ && server_->is_awaited(request); }
  std::string ClientAddress(int request) const override;
  bool UnderForeignName(int request) const override;
  void SendPage(int request, const std::string& page, bool serve_file) override;
  void SendAnswer(int request, const ApiAnswer& answer) override;
  void SendStream(int request, std::shared_ptr<StreamSource> source) override;
  void StreamsHaveMore() override;
  void Tokens(std::vector<ApiToken> tokens) override;
  NewToken new_token() override;
  void Https(WebHttps https) override { https_.settings(std::move(https)); }
  WebHttpsState HttpsState() const override { return https_.state(); }
  std::string HttpsFault(const WebHttps& https) const override { return https_.fault(https); }
  std::string make_certificate(const std::filesystem::path& certificate,
                               const std::filesystem::path& key, int days) override;

 private:
  GateRules rules(http::DocumentFolder& folder);
  // Once around: reads, hands requests to the program, sends what it answered.
  void turn();
  void run();
  void tell_streams();
  void with_running(const std::function<void(RunningServer&)>& function);
  bool watch_all();
  void hand_over();
  bool hand_over_page();
  bool hand_over_call();
  void answered(bool has_to_send);
  bool has_patience() const;
  // Sees to it that the next turn comes.
  void arm();
  void turn_soon(std::chrono::milliseconds delay);
  void look_around();

  EventLoop& loop_;
  WebHost& host_;
  const HttpLimits limits_;
  std::string port_;
  std::filesystem::path folder_;
  bool log_in_ = false;
  bool has_logins_ = false;
  std::size_t pages_at_once_ = 12;
  SwitchTest switches_;
  StateTest state_pages_;
  std::function<std::string(const WebRefusal&)> refusal_pages_;
  WebAccess access_;
  HttpsService https_;
  std::vector<ApiToken> tokens_;

  // What the loop watches, for good: the library's descriptor comes and goes inside it.
  const std::unique_ptr<SocketSet> watched_;
  std::unique_ptr<RunningServer> server_;
  RunningServer* running_ = nullptr;        // while it is in its run()
  std::unique_ptr<RunningServer> stopped_;  // the one that was stopped from there
  int last_id_ = 0;
  bool in_turn_ = false;
  std::chrono::milliseconds turn_start_{};
  bool answered_ = false;  // since the server ran last
  EventLoop::CallId next_turn_ = 0;
  std::chrono::milliseconds next_turn_delay_{};
  EventLoop::CallId next_look_ = 0;
  // Known to functions that a loop may still call; gone with the server.
  std::shared_ptr<HttpServer*> self_;
};

}  // namespace homewarden::http
