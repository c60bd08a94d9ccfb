#pragma once

#include <optional>
#include <string>

#include "platform/http/refusal.h"
#include "platform/http/request_head.h"
#include "platform/http/visitor.h"
#include "platform/web_api.h"

namespace homewarden::http {

inline constexpr const char* kMethodsOfCalls = "GET, HEAD, POST, PUT, DELETE";

// Whether a request asks for something and changes nothing.
bool only_asks(const RequestHead& head);
// Whether a browser asks what it may ask in the name of a page of somebody else's.
bool is_preflight(const RequestHead& head);
// Whether it has a method that programs may ask with, or is a preflight.
bool is_method_of_calls(const RequestHead& head);
// Why the body that it announces is not taken; nothing for one without.
std::optional<Refusal> check_body(const RequestHead& head);

// The request as programs make it, without its body and token. `path`: see api_path().
ApiRequest call_of(const RequestHead& head, const Visitor& visitor, std::string path);

// For a body of which more has come than there may be.
Refusal too_large();

}  // namespace homewarden::http
