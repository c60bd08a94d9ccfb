#include "platform/http/api_form.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace homewarden::http {
namespace {

// JSON is UTF-8 whether that is said or not.
bool is_json(std::string_view type) {
  const std::size_t end = std::min(type.find(';'), type.size());
  const std::string parameters = to_lower(without_blanks(type.substr(end)));
  return equals_ignoring_case(trim_blanks(type.substr(0, end)), "application/json") &&
         (parameters.find("charset=") == std::string::npos ||
          parameters.find("charset=utf-8") != std::string::npos ||
          parameters.find("charset=\"utf-8\"") != std::string::npos);
}

}  // namespace

bool only_asks(const RequestHead& head) {
  return head.method == "GET" || head.method == "HEAD";
}

bool is_preflight(const RequestHead& head) {
  return head.method == "OPTIONS" && head.origin && head.asked_method;
}

bool is_method_of_calls(const RequestHead& head) {
  constexpr std::array<std::string_view, 3> kChange{"POST", "PUT", "DELETE"};
  return only_asks(head) || is_preflight(head) ||
         std::find(kChange.begin(), kChange.end(), head.method) != kChange.end();
}

std::optional<Refusal> check_body(const RequestHead& head) {
  if (!head.has_body) return std::nullopt;
  if (only_asks(head) || is_preflight(head))
    return Refusal{400, "A question with a body is not understood."};
  if (head.body_size && *head.body_size > kLargestApiBody) return too_large();
  if (head.content_type && is_json(*head.content_type)) return std::nullopt;
  return Refusal{415, "The body must be JSON and be announced as such: application/json."};
}

Refusal too_large() {
  return {413, "The body is too large: " + std::to_string(kLargestApiBody) + " bytes are taken."};
}

ApiRequest call_of(const RequestHead& head, const Visitor& visitor, std::string path) {
  ApiRequest call;
  call.method = head.method == "HEAD" ? "GET" : head.method;
  call.path = std::move(path);
  call.query = head.query();
  call.last_event_id = head.last_event_id.value_or("");
  call.from = text_of(visitor.from);
  return call;
}

}  // namespace homewarden::http
