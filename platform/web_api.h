#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace homewarden {

// What programs ask the web server, and what they are answered. Texts are UTF-8.

// Under which the interface for programs lies.
inline constexpr std::string_view kApiRoot = "/api/v1";

struct ApiRequest {
  std::string method;   // "GET", "POST", "PUT" or "DELETE"; HEAD comes as GET
  std::string path;     // behind kApiRoot, decoded once: "/devices/KitchenLamp"
  std::string query{};  // what followed the "?", as it was sent
  std::string body{};   // at most kLargestApiBody bytes, announced as JSON; "" for none
  std::string last_event_id{};
  std::string from{};      // the client's address, as a person writes it
  std::string token{};     // the name of the token it came with; "" for one without
  bool may_change = true;  // false for a token that may only read
};

inline constexpr std::size_t kLargestApiBody = 16 * 1024;

struct ApiAnswer {
  unsigned status = 200;  // of HTTP
  std::string body{};     // "" for none
  std::string type = "application/json";
  // Headers, "" for none: where the thing asked for is, in how many seconds to ask again, and which
  // methods are taken.
  std::string location{};
  std::string retry_after{};
  std::string allow{};
};

// What one reader of a stream of changes is sent (text/event-stream). Asked whenever the reader can
// take more, which may be long after there was something.
class StreamSource {
 public:
  virtual ~StreamSource() = default;

  // What comes next, whole events; "" when there is nothing now. About 16 KB at most, unless one
  // event is larger.
  virtual std::string next() = 0;
  // Whether nothing more will come. What next() has is sent before the stream is ended.
  virtual bool is_over() const = 0;
};

// Somebody who may use the interface for programs without logging in.
struct ApiToken {
  std::string name;         // for people, unlike the others
  std::string hash;         // of its secret, as of new_token()
  bool may_change = false;  // false: may only read

  bool operator==(const ApiToken&) const = default;
};

// What is shown to a person once, and what is kept of it.
struct NewToken {
  std::string secret;  // "hw_" and letters and digits; sent as "Authorization: Bearer hw_..."
  std::string hash;    // hexadecimal
};

}  // namespace homewarden
