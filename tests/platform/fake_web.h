#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/web_server_control.h"

namespace homewarden::testing {

// A web server without a network: requests are put in by the test, answers written down.
class FakeWeb : public WebServerControl {
 public:
  bool Listening() const override { return listening_; }
  void ServerPort(const std::string& port) override { port_ = port; }
  void DocumentFolder(const std::filesystem::path& folder) override { folder_ = folder; }
  void AuthenticationMode(int mode) override { mode_ = mode; }
  void ServerOption(bool) override {}
  void servermaxconnections(int) override {}
  void SwitchRequests(SwitchTest test) override { what_switches = std::move(test); }
  void RefusalPages(std::function<std::string(const WebRefusal&)> pages) override {
    refusal_page = std::move(pages);
  }
  void StatePages(StateTest test) override { state_page = std::move(test); }
  void Access(WebAccess rules) override { access = std::move(rules); }
  std::vector<std::string> AccessFaults(const WebAccess&) const override { return access_faults; }
  std::vector<std::string> Addresses() const override { return addresses; }
  bool HasLogins() const override { return has_logins; }
  void StartListening() override {
    listening_ = !taken_ports.contains(port_);
    starts.push_back(port_ + " " + folder_.string() + " " + std::to_string(mode_));
  }
  bool StopListening() override {
    listening_ = false;
    return true;
  }
  std::string QueryText(int request, const std::string&) override { return queries_[request]; }
  bool IsAwaited(int request) override { return !gone.contains(request); }
  std::string ClientAddress(int) const override { return client; }
  bool UnderForeignName(int) const override { return under_foreign_name; }
  void SendPage(int request, const std::string& page, bool serve_file) override {
    answers.push_back(serve_file ? std::to_string(request) + " file"
                                 : std::to_string(request) + " " + page);
  }

  void SendAnswer(int request, const ApiAnswer& answer) override { api_answers[request] = answer; }
  void SendStream(int request, std::shared_ptr<StreamSource> source) override {
    streams[request] = std::move(source);
  }
  void StreamsHaveMore() override { ++stream_calls; }
  void Tokens(std::vector<ApiToken> now) override { tokens = std::move(now); }
  NewToken new_token() override {
    const std::string number = std::to_string(++made_tokens_);
    return {"hw_secret" + number, std::string(64 - number.size(), '0') + number};
  }
  void Https(WebHttps wanted) override { https = std::move(wanted); }
  WebHttpsState HttpsState() const override { return https_state; }
  std::string HttpsFault(const WebHttps&) const override { return https_fault; }
  std::string make_certificate(const std::filesystem::path& certificate,
                               const std::filesystem::path& key, int) override {
    certificates.push_back(certificate.string() + " " + key.string());
    return certificate_trouble;
  }

  // A request of a program; its identifier.
  int api(const ApiRequest& request) {
    ApiRequestArrived(++last_id_, request);
    return last_id_;
  }

  // A request from outside; its identifier.
  int request(const std::string& page, const std::string& query = {}) {
    const int id = ++last_id_;
    queries_[id] = query;
    RequestArrived(id, page);
    return id;
  }

  std::set<std::string> taken_ports;
  std::set<int> gone;  // requests whose clients have left
  bool has_logins = true;
  std::vector<std::string> addresses;
  std::vector<std::string> starts;   // port, folder, mode
  std::vector<std::string> answers;  // identifier and page
  WebAccess access;
  std::vector<std::string> access_faults;
  std::string client = "192.168.1.7";
  bool under_foreign_name = false;
  SwitchTest what_switches;
  StateTest state_page;
  std::function<std::string(const WebRefusal&)> refusal_page;
  std::map<int, ApiAnswer> api_answers;
  std::map<int, std::shared_ptr<StreamSource>> streams;
  int stream_calls = 0;
  std::vector<ApiToken> tokens;
  WebHttps https;
  WebHttpsState https_state;
  std::string https_fault;
  std::vector<std::string> certificates;  // made: the two paths
  std::string certificate_trouble;

 private:
  std::string port_;
  std::filesystem::path folder_;
  int mode_ = 0;
  bool listening_ = false;
  int last_id_ = 0;
  int made_tokens_ = 0;
  std::map<int, std::string> queries_;
};

}  // namespace homewarden::testing
