#include "platform/http/response.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "platform/http/api_path.h"
#include "platform/http/cookies.h"

namespace homewarden::http {
namespace {

constexpr std::array<std::pair<const char*, const char*>, 3> kCommonHeaders{{
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "same-origin"},
}};

constexpr const char* kHtml = "text/html; charset=windows-1252";

MHD_Response* from_text(const std::string& text) {
  // The library asks for a pointer to what it will not change.
  void* data = const_cast<char*>(text.data());
  return MHD_create_response_from_buffer(text.size(), data, MHD_RESPMEM_MUST_COPY);
}

// A list of tags, or "*". What is compared is whether the content is the same.
bool lists_tag(std::string_view list, std::string_view tag) {
  if (trim_blanks(list) == "*") return true;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    std::string_view listed = trim_blanks(list.substr(0, comma));
    if (listed.starts_with("W/")) listed.remove_prefix(2);
    if (listed == tag) return true;
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return false;
}

bool client_has(const Document& document, const RequestHead& head) {
  if (head.if_none_match) return lists_tag(*head.if_none_match, document.tag);
  return head.if_modified_since == document.last_modified;
}

}  // namespace

Response::Response(unsigned status, MHD_Response* response, const std::string& policy)
    : status_(status), response_(response) {
  header("Content-Security-Policy", policy);
  for (const auto& [name, value] : kCommonHeaders) header(name, value);
}

Response::Response(Response&& other) noexcept
    : status_(other.status_), response_(std::exchange(other.response_, nullptr)) {}

Response& Response::operator=(Response&& other) noexcept {
  std::swap(status_, other.status_);
  std::swap(response_, other.response_);
  return *this;
}

Response::~Response() {
  if (response_ != nullptr) MHD_destroy_response(response_);
}

void Response::header(const char* name, const std::string& value) {
  if (response_ != nullptr) MHD_add_response_header(response_, name, value.c_str());
}

bool Response::queue_on(MHD_Connection* connection) const {
  return response_ != nullptr && MHD_queue_response(connection, status_, response_) == MHD_YES;
}

Response Response::page(const std::string& html, const std::string& policy) {
  Response response(MHD_HTTP_OK, from_text(html), policy);
  response.header("Content-Type", kHtml);
  response.header("Cache-Control", "no-store");
  response.header("Set-Cookie", kSetHouseCookie);
  return response;
}

Response Response::refusal(const Refusal& refusal, const std::string& html) {
  const bool is_page = !html.empty();
  Response response(refusal.status, from_text(is_page ? html : refusal.reason + "\n"));
  response.header("Content-Type", is_page ? kHtml : "text/plain; charset=utf-8");
  response.header("Cache-Control", "no-store");
  if (refusal.sets_cookie) response.header("Set-Cookie", kSetHouseCookie);
  if (!refusal.header.empty()) response.header(refusal.header.c_str(), refusal.value);
  return response;
}

Response Response::problem(const Refusal& refusal) {
  const bool has_body = refusal.status != MHD_HTTP_NO_CONTENT;
  ApiAnswer answer{refusal.status};
  if (has_body) answer.body = problem_json(refusal.status, refusal.reason);
  answer.type = "application/problem+json";
  Response response = program(answer);
  if (!refusal.header.empty()) response.header(refusal.header.c_str(), refusal.value);
  return response;
}

Response Response::program(const ApiAnswer& answer) {
  Response response(answer.status, from_text(answer.body));
  if (!answer.body.empty()) response.header("Content-Type", answer.type);
  response.header("Cache-Control", "no-store");
  if (!answer.location.empty()) response.header("Location", answer.location);
  if (!answer.retry_after.empty()) response.header("Retry-After", answer.retry_after);
  if (!answer.allow.empty()) response.header("Allow", answer.allow);
  return response;
}

Response Response::stream(Stream& reader) {
  constexpr std::size_t kBlock = 4096;  // for clients that take no chunks
  Response response(MHD_HTTP_OK, MHD_create_response_from_callback(
                                     MHD_SIZE_UNKNOWN, kBlock, &Stream::read, &reader, nullptr));
  response.header("Content-Type", "text/event-stream");
  response.header("Cache-Control", "no-store");
  response.header("X-Accel-Buffering", "no");
  return response;
}

Response Response::redirect(const std::string& to) {
  Response response(MHD_HTTP_FOUND, from_text(""));
  response.header("Cache-Control", "no-store");
  response.header("Location", to);
  return response;
}

Response Response::document(Document document, const RequestHead& head) {
  const bool known = !document.is_page && client_has(document, head);
  MHD_Response* body = nullptr;
  if (known) {
    body = from_text("");
  } else {
    // The library closes the descriptor that it is given, unless it fails.
    body = MHD_create_response_from_fd64(document.size, document.file.get());
    if (body != nullptr) document.file.release();
  }
  Response response(known ? MHD_HTTP_NOT_MODIFIED : MHD_HTTP_OK, body, document.policy);
  response.header("Content-Type", document.type);
  if (document.is_page) {
    response.header("Cache-Control", "no-store");
  } else {
    // What belongs to the pages is asked for again with each, so that both are of one version.
    const bool is_picture = document.type.starts_with("image/");
    response.header("Cache-Control", is_picture ? "private, max-age=3600" : "private, no-cache");
    response.header("ETag", document.tag);
    response.header("Last-Modified", document.last_modified);
  }
  return response;
}

}  // namespace homewarden::http
