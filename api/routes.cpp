#include "api/routes.h"

#include <algorithm>
#include <exception>

#include "base/text.h"

namespace homewarden {
namespace {

// A slash at the end changes nothing.
std::vector<std::string> segments_of(std::string_view path) {
  std::vector<std::string> segments;
  if (path.ends_with('/')) path.remove_suffix(1);
  while (!path.empty()) {
    if (path.front() == '/') path.remove_prefix(1);
    if (path.empty() && segments.empty()) break;  // the root, with its slash
    const std::size_t end = std::min(path.find('/'), path.size());
    segments.emplace_back(path.substr(0, end));
    path.remove_prefix(end);
  }
  return segments;
}

bool is_name(const std::string& segment) {
  return segment.starts_with('{');
}

// What stands for the names of the pattern; nothing for a path of another form.
std::optional<std::vector<std::string>> names_in(const std::vector<std::string>& path,
                                                 const std::vector<std::string>& pattern) {
  if (path.size() != pattern.size()) return std::nullopt;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (is_name(pattern[i]))
      names.push_back(path[i]);
    else if (path[i] != pattern[i])
      return std::nullopt;
  }
  return names;
}

const char* title_of(unsigned status) {
  switch (status) {
    case 400:
      return "Bad Request";
    case 403:
      return "Forbidden";
    case 404:
      return "Not Found";
    case 405:
      return "Method Not Allowed";
    case 409:
      return "Conflict";
    case 422:
      return "Unprocessable Content";
    case 429:
      return "Too Many Requests";
    case 503:
      return "Service Unavailable";
    default:
      return "Error";
  }
}

}  // namespace

std::optional<std::string> ApiCall::parameter(std::string_view name) const {
  std::string_view rest = request.query;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('&'), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t equals = std::min(part.find('='), part.size());
    if (part.substr(0, equals) != name) continue;
    std::string value(part.substr(std::min(equals + 1, part.size())));
    std::replace(value.begin(), value.end(), '+', ' ');  // as forms and most libraries send blanks
    return percent_decoded(value);
  }
  return std::nullopt;
}

Routes::Routes(Operations& operations, const JsonCodec& json, WebServerControl& web)
    : json_(json), web_(web) {
  web.ApiRequestArrived.connect(
      [this, &operations](int id, const ApiRequest& request) { arrived(operations, id, request); });
}

void Routes::add(std::string method, std::string pattern, Handler handler) {
  routes_.push_back({std::move(method), segments_of(pattern), std::move(handler)});
}

std::vector<std::string> Routes::offered() const {
  std::vector<std::string> all;
  for (const Route& route : routes_) {
    std::string& one = all.emplace_back(route.method + " ");
    for (const std::string& segment : route.pattern) one += "/" + segment;
    if (route.pattern.empty()) one += "/";
  }
  return all;
}

void Routes::arrived(Operations& operations, int id, const ApiRequest& request) {
  const auto path = segments_of(request.path);
  std::string methods;  // of what lies there
  for (const Route& route : routes_) {
    auto names = names_in(path, route.pattern);
    if (!names) continue;
    if (route.method != request.method) {
      methods += (methods.empty() ? "" : ", ") +
                 std::string(route.method == "GET" ? "GET, HEAD" : route.method);
      continue;
    }
    if (request.method != "GET" && !request.may_change) {
      send(id, ApiProblem{403, "This token may only read."});
      return;
    }
    ApiCall call{id, request, std::move(*names), {}};
    if (!request.body.empty()) {
      auto body = json_.read(request.body);
      if (!body) {
        send(id, ApiProblem{400, "The body is no JSON."});
        return;
      }
      call.body = std::move(*body);
    }
    operations.start(answer(operations, route, std::move(call)));
    return;
  }
  if (!methods.empty())
    send(id, ApiProblem{405, "This cannot be asked with " + request.method + ".", "", methods});
  else
    send(id, ApiProblem{404, "There is nothing here. What there is stands in " +
                                 std::string(kApiRoot) + "/openapi.json."});
}

Task<void> Routes::answer(Operations& operations, const Route& route, ApiCall call) {
  const int id = call.id;
  try {
    const Result result = co_await route.handler(std::move(call));
    if (const auto* answer = std::get_if<Answer>(&result)) send(id, *answer);
    if (const auto* problem = std::get_if<ApiProblem>(&result)) send(id, *problem);
  } catch (...) {
    operations.report(std::current_exception());
    send(id, ApiProblem{500, "The program could not do this."});
  }
}

void Routes::send(int id, const Answer& answer) {
  ApiAnswer out;
  out.status = answer.status;
  if (!answer.body.is_null()) out.body = json_.write(answer.body) + "\n";
  out.location = answer.location;
  out.retry_after = answer.retry_after;
  web_.SendAnswer(id, out);
}

void Routes::send(int id, const ApiProblem& problem) {
  const Json body = Json::Object{{"title", title_of(problem.status)},
                                 {"status", static_cast<int>(problem.status)},
                                 {"detail", problem.detail}};
  ApiAnswer out{problem.status, json_.write(body) + "\n", "application/problem+json"};
  out.retry_after = problem.retry_after;
  out.allow = problem.allow;
  web_.SendAnswer(id, out);
}

}  // namespace homewarden
