#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/http/http_server.h"
#include "platform/linux/linux_web_host.h"
#include "tests/http/client.h"
#include "tests/http/socket_loop.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {

using namespace http;

inline HttpLimits on_loopback() {
  HttpLimits limits;
  limits.address = "127.0.0.1";
  return limits;
}

// A server on the loop of the test. It answers every page with its name and query, files and what
// is asked for with "file" from the folder, and what names "hold" not at all.
// "turn<state>~<device>" switches a device; "show" is the query that shows what it did.
class ServerTest : public ::testing::Test {
 protected:
  explicit ServerTest(HttpLimits limits = on_loopback())
      : port(free_port()),
        owned(std::make_unique<HttpServer>(
            loop, host, [this](int fd, auto function) { watch(fd, function); }, limits)),
        server(*owned) {
    server.ServerPort(std::to_string(port));
    server.DocumentFolder(folder.path());
    server.SwitchRequests(what_switches);
    server.RequestArrived.connect([this](int id, const std::string& page) { answer(id, page); });
  }

  static std::optional<WebSwitch> what_switches(const std::string&, const std::string& query) {
    const auto tilde = query.find('~');
    if (!query.starts_with("turn") || tilde == std::string::npos) return std::nullopt;
    return WebSwitch{query.substr(tilde), query.substr(0, tilde), "show"};
  }

  void watch(int descriptor, std::function<void()> function) {
    watched = descriptor;
    loop.watch_readable(descriptor, std::move(function));
  }

  void start() {
    server.StartListening();
    ASSERT_TRUE(server.Listening());
  }

  Answer get(const std::string& path, const std::string& headers = "") {
    return Client(loop, port).ask(path, headers);
  }

  // A client whose request is being handled and not answered.
  std::unique_ptr<Client> hold() {
    const std::size_t before = held.size();
    auto client = std::make_unique<Client>(loop, port);
    client->request("/hold.html?held~%zz?a=&");
    EXPECT_TRUE(loop.run_until([&] { return held.size() > before; }));
    return client;
  }

  void answer(int id, const std::string& page) {
    pages.push_back(page);
    if (page.find("hold") != std::string::npos) {
      held.push_back(id);
    } else if (server.QueryText(id, "") == "file") {
      server.SendPage(id, "", true);
    } else if (page.find(".html") != std::string::npos || page.empty()) {
      server.SendPage(id, page + "?" + server.QueryText(id, ""), false);
    } else {
      server.SendPage(id, "", true);
    }
  }

  SocketLoop loop;
  os_linux::LinuxWebHost host;
  ScratchFolder folder;
  const int port;
  int watched = -1;  // the descriptor of the server
  std::unique_ptr<HttpServer> owned;
  HttpServer& server;
  std::vector<std::string> pages;  // that were raised
  std::vector<int> held;
};

}  // namespace homewarden::testing
