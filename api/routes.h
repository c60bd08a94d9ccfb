#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/json.h"
#include "base/operations.h"
#include "base/task.h"
#include "platform/json_codec.h"
#include "platform/web_server_control.h"

namespace homewarden {

// One question of a program, taken apart.
struct ApiCall {
  int id = 0;  // of the request, for who answers it with a stream
  ApiRequest request;
  std::vector<std::string> names;  // what stands in the path for each "{...}" of its pattern
  Json body;                       // null without one

  // A parameter of the query, decoded; nothing when it is not there.
  std::optional<std::string> parameter(std::string_view name) const;
};

// An answer with an error (RFC 9457, application/problem+json): `detail` is a sentence for a
// person.
struct ApiProblem {
  unsigned status = 400;
  std::string detail;
  std::string retry_after{};  // in seconds; "" for none
  std::string allow{};        // the methods that are taken; "" for none
};

// What the interface for programs offers: by method and path, each an operation that answers. Knows
// nothing of what they do.
class Routes {
 public:
  // Nothing: the operation has answered by itself, with a stream.
  struct Answer {
    unsigned status = 200;
    Json body{};
    std::string location{};
    std::string retry_after{};
  };
  using Result = std::variant<Answer, ApiProblem, std::monostate>;
  using Handler = std::function<Task<Result>(ApiCall)>;

  Routes(Operations& operations, const JsonCodec& json, WebServerControl& web);

  // `pattern` is a path behind kApiRoot: "/devices/{id}/commands". What is no GET changes something
  // and is refused to tokens that only read.
  void add(std::string method, std::string pattern, Handler handler);

  // All of them, as "GET /events/{id}".
  std::vector<std::string> offered() const;

 private:
  struct Route {
    std::string method;
    std::vector<std::string> pattern;
    Handler handler;
  };

  void arrived(Operations& operations, int id, const ApiRequest& request);
  Task<void> answer(Operations& operations, const Route& route, ApiCall call);
  void send(int id, const Answer& answer);
  void send(int id, const ApiProblem& problem);

  const JsonCodec& json_;
  WebServerControl& web_;
  std::vector<Route> routes_;
};

}  // namespace homewarden
