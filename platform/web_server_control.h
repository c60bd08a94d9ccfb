#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/signal.h"
#include "platform/web_access.h"
#include "platform/web_api.h"
#include "platform/web_https.h"

namespace homewarden {

// What a request switches.
struct WebSwitch {
  std::string device;  // whatever tells it from others; "" for one that is like no other
  std::string state;   // that it is to have
  std::string shows;   // the query of the page that shows the same without switching anything
};

// Why a request is not answered with what it asked for.
struct WebRefusal {
  unsigned status = 0;  // of HTTP
  std::string reason;   // whole sentences, in the system code page
  // The address, from its "/" on, that the person may ask for once more; "" for none.
  std::string again;
  std::string asked = {};  // the address that was asked for, whatever it is
};

// The web server. It answers on the event loop of the program: every request is raised as an event
// and waits, without holding up anything, until SendPage answers it.
//
// What switches nothing is raised at once, except that a page waits for the switches which came
// from its own address before it. A switch is raised when every other one has been answered;
// addresses take turns. One that nobody waits for any more is dropped. One of the same device and
// state as the last of its device that waits, from the same address, is one with it: it is raised
// behind it as a request for the page that shows what became of it.
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
  // Requests that switch nothing of which the program has not answered the ones it was handed: at
  // most so many, at least 1, then others wait. Switches are not counted.
  virtual void servermaxconnections(int requests) = 0;

  // What a request, by page and query, switches; nothing for the others. Switches need a Host that
  // is this machine's and must not come from a page of somebody else's.
  using SwitchTest =
      std::function<std::optional<WebSwitch>(const std::string& page, const std::string& query)>;
  virtual void SwitchRequests(SwitchTest test) = 0;
  // Which requests show states; nothing for the others. Those that somebody else's page causes are
  // refused, or come as requests for the home page.
  using StateTest =
      std::function<std::optional<StatePage>(const std::string& page, const std::string& query)>;
  virtual void StatePages(StateTest test) = 0;
  // Builds the page, HTML in Windows-1252, that a browser gets for a refusal; programs get the
  // reason as plain text. Without such a function everybody does.
  virtual void RefusalPages(std::function<std::string(const WebRefusal&)> pages) = 0;
  // For the next StartListening. What AccessFaults() names is left out.
  virtual void Access(WebAccess access) = 0;
  // The entries that are no host name, no origin of http or https, no address and no network.
  virtual std::vector<std::string> AccessFaults(const WebAccess& access) const = 0;

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
  // Whether anybody still waits for the answer, asked of the system at this moment: somebody who
  // has gone wants nothing switched. False for a request that is not waiting.
  virtual bool IsAwaited(int request) = 0;
  // The address that a request comes from, as a person writes it; "" for a request that is not
  // waiting.
  virtual std::string ClientAddress(int request) const = 0;
  // Whether a request for a home page came under a host name that is not known to be this
  // machine's: whoever let the name point here could read the answer, which must show no states.
  virtual bool UnderForeignName(int request) const = 0;
  // Answers a request: with the page, or, when `serve_file` is set, with the file of the document
  // folder that it asked for. Nothing happens for a request that is not waiting any more.
  virtual void SendPage(int request, const std::string& page, bool serve_file) = 0;

  // A request: its identifier, never used twice in a run, and the page asked for, without the
  // leading slash: "index.html", "" for the root.
  Signal<int, const std::string&> RequestArrived;

  // ---- Programs ---------------------------------------------------------------------------------

  // A request below kApiRoot, by its identifier, which is none of a page. It waits for SendAnswer
  // or SendStream; whoever has gone meanwhile is not told of. It has passed the same guards as
  // pages: from foreign pages and under a foreign Host there are none, and none with a wrong token.
  Signal<int, const ApiRequest&> ApiRequestArrived;
  // Answers a request of a program. Nothing happens for one that is not waiting any more.
  virtual void SendAnswer(int request, const ApiAnswer& answer) = 0;
  // Answers it with a stream that goes on until its source is over, its reader leaves or takes
  // nothing for too long, its token is revoked or the server stops. A source is dropped then.
  virtual void SendStream(int request, std::shared_ptr<StreamSource> source) = 0;
  // Has every stream ask its source, from the event loop and soon.
  virtual void StreamsHaveMore() = 0;

  // Those that count from now on, also while the server runs: streams of others end at once.
  virtual void Tokens(std::vector<ApiToken> tokens) = 0;
  virtual NewToken new_token() = 0;

  // ---- TLS --------------------------------------------------------------------------------------

  // For the next StartListening. A certificate or port that cannot be used leaves the server
  // without TLS, which HttpsState() tells.
  virtual void Https(WebHttps https) = 0;
  virtual WebHttpsState HttpsState() const = 0;
  // Why the next start with these would be without TLS, as far as can be seen before; "" when
  // nothing is. Whole sentences.
  virtual std::string HttpsFault(const WebHttps& https) const = 0;
  // Files that were renewed are taken up within a minute, without a restart; what is wrong with
  // them is told, and the old ones go on.
  Signal<> HttpsStateChanged;
  // Makes a key and a certificate for this machine's names and addresses that it signs itself, good
  // for `days`. The key can be read by its owner only. "", or why it could not be done.
  virtual std::string make_certificate(const std::filesystem::path& certificate,
                                       const std::filesystem::path& key, int days) = 0;
};

}  // namespace homewarden
