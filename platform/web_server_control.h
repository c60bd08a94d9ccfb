#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/signal.h"

namespace homewarden {

// Why a request is not answered with what it asked for.
struct WebRefusal {
  unsigned status = 0;  // of HTTP
  std::string reason;   // whole sentences, in the system code page
  // The address, from its "/" on, that the person may ask for once more; "" for none.
  std::string again;
};

// The web server. It answers on the event loop of the program: every request for a page is raised
// as an event and waits, without holding up anything, until SendPage answers it.
//
// What must not be answered (addresses that may not ask, wrong passwords, foreign pages that try to
// switch something, malformed requests) is refused before any event is raised.
class WebServerControl {
 public:
  virtual ~WebServerControl() = default;

  // False before StartListening, after StopListening, and when the port could not be used.
  virtual bool Listening() const = 0;

  // For the next StartListening. A port that is no number from 1 to 65535 cannot be listened on.
  virtual void ServerPort(const std::string& port) = 0;
  virtual void DocumentFolder(const std::filesystem::path& folder) = 0;
  // 1 admits only requests that log in with a user name and password of `htaccess.txt` in the
  // document folder, read at the start; 0 admits the same machine and private networks only.
  virtual void AuthenticationMode(int mode) = 0;
  // Accepted and not used.
  virtual void ServerOption(bool on) = 0;
  // Requests that are handed to the program at once, at least 1; others wait.
  virtual void servermaxconnections(int requests) = 0;

  // Which requests, by page and query, switch something: they need a Host that is this machine's
  // and must not come from a page of somebody else's.
  virtual void SwitchRequests(std::function<bool(const std::string&, const std::string&)> test) = 0;
  // Builds the page, HTML in Windows-1252, that a browser gets for a refusal; programs get the
  // reason as plain text. Without such a function everybody does.
  virtual void RefusalPages(std::function<std::string(const WebRefusal&)> pages) = 0;
  // Host names that are this machine's besides addresses, localhost, its own names and names ending
  // in .local, .lan, .home or .home.arpa.
  virtual void AllowedHosts(std::vector<std::string> names) = 0;

  // Addresses under which other devices in the network reach this machine; none without a network.
  virtual std::vector<std::string> Addresses() const = 0;

  // Whether the running server knows anybody who may log in. False when `htaccess.txt` could not be
  // read at the start or has no line with a user name and password: with AuthenticationMode 1
  // nobody is admitted then.
  virtual bool HasLogins() const = 0;

  // Whether it worked is read from Listening. Nothing happens while the server runs: new settings
  // need a stop.
  virtual void StartListening() = 0;
  // Requests that wait are given up. False when the server did not run.
  virtual bool StopListening() = 0;

  // What followed the "?" of a request, as it was sent; "" for a request that is not waiting. The
  // text passed is not used.
  virtual std::string QueryText(int request, const std::string& unused) = 0;
  // Answers a request: with the page, or, when `serve_file` is set, with the file of the document
  // folder that it asked for. Nothing happens for a request that is not waiting any more.
  virtual void SendPage(int request, const std::string& page, bool serve_file) = 0;

  // A request: its identifier, never used twice in a run, and the page asked for, without the
  // leading slash: "index.html", "" for the root.
  Signal<int, const std::string&> RequestArrived;
};

}  // namespace homewarden
