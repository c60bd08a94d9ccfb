#include "platform/http/forwarded.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace homewarden::http {
namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// An address, perhaps with a port; IPv6 in brackets then.
std::optional<Address> address_in(std::string_view node) {
  if (const auto address = parse_address(node)) return address;
  const bool bracketed = node.starts_with('[');
  const std::size_t end = bracketed ? node.find(']') : node.find(':');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view port = node.substr(bracketed ? end + 1 : end);
  if (!port.empty() && (!port.starts_with(':') || !parse_port(std::string(port.substr(1)))))
    return std::nullopt;
  const auto address = parse_address(node.substr(bracketed ? 1 : 0, end - (bracketed ? 1 : 0)));
  // Brackets stand around IPv6, a port behind a colon follows IPv4.
  const bool is_v6 = node.substr(0, end).find(':') != std::string_view::npos;
  return bracketed == is_v6 ? address : std::nullopt;
}

std::optional<bool> https_in(std::string_view scheme) {
  if (equals_ignoring_case(scheme, "https")) return true;
  if (equals_ignoring_case(scheme, "http")) return false;
  return std::nullopt;
}

std::string_view last_of_list(std::string_view list) {
  return trimmed(list.substr(list.rfind(',') + 1));
}

// A value of RFC 7239 and what follows it; nothing when its quotes do not end.
std::optional<std::string> take_value(std::string_view& rest) {
  std::string value;
  if (!rest.starts_with('"')) {
    const std::size_t end = std::min(rest.find_first_of(",;\""), rest.size());
    value = trimmed(rest.substr(0, end));
    rest.remove_prefix(end);
    return value;
  }
  rest.remove_prefix(1);
  while (!rest.empty() && rest.front() != '"') {
    if (rest.front() == '\\') rest.remove_prefix(1);
    if (rest.empty()) break;
    value += rest.front();
    rest.remove_prefix(1);
  }
  if (rest.empty()) return std::nullopt;
  rest.remove_prefix(1);
  rest = trimmed(rest);
  return value;
}

// The last element of a list of RFC 7239. The whole list is read, and must be well-formed: with a
// quote that does not end a client could make what the proxy adds a part of its own text.
Hop last_element(std::string_view rest) {
  Hop hop;
  bool told_for = false;
  bool told_proto = false;
  while (true) {
    rest = trimmed(rest);
    const std::size_t end = rest.find_first_of("=,;\"");
    if (end != std::string_view::npos && rest[end] == '=') {
      const std::string_view name = trimmed(rest.substr(0, end));
      rest = trimmed(rest.substr(end + 1));
      const auto value = take_value(rest);
      if (!value) return {};
      const bool is_for = equals_ignoring_case(name, "for");
      const bool is_proto = equals_ignoring_case(name, "proto");
      if ((is_for && std::exchange(told_for, true)) ||
          (is_proto && std::exchange(told_proto, true)))
        return {};
      if (is_for) hop.from = address_in(*value);
      if (is_proto) hop.https = https_in(*value);
    } else if (!trimmed(rest.substr(0, end)).empty()) {
      return {};
    } else {
      rest.remove_prefix(std::min(end, rest.size()));
    }
    if (rest.empty()) return hop;
    const char separator = rest.front();
    if (separator != ',' && separator != ';') return {};
    if (separator == ',') {
      hop = {};
      hop.passed_on = true;
      told_for = told_proto = false;
    }
    rest.remove_prefix(1);
  }
}

template <class T>
std::optional<T> agreed(bool told, std::optional<T> one, bool also_told, std::optional<T> other) {
  if (told && also_told) return one == other ? one : std::nullopt;
  return told ? one : other;
}

void append(std::string& list, std::string_view value) {
  if (!list.empty()) list += ',';
  list += value;
}

}  // namespace

void ForwardedHeaders::take(std::string_view name, std::string_view value) {
  constexpr std::string_view kOurs = "x-forwarded-";
  if (equals_ignoring_case(name, "Forwarded"))
    append(forwarded, value);
  else if (equals_ignoring_case(name, "X-Forwarded-For"))
    append(x_for, value);
  else if (equals_ignoring_case(name, "X-Forwarded-Proto"))
    append(x_proto, value);
  else if (!equals_ignoring_case(name.substr(0, kOurs.size()), kOurs) &&
           !equals_ignoring_case(name, "X-Real-IP"))
    return;
  any = true;
}

Hop last_hop(const ForwardedHeaders& headers) {
  const Hop standard = last_element(headers.forwarded);
  const bool told = !headers.forwarded.empty();
  const bool tells_proto = told && (standard.https || headers.x_proto.empty());
  return {
      agreed(told, standard.from, !headers.x_for.empty(), address_in(last_of_list(headers.x_for))),
      agreed(tells_proto, standard.https, !headers.x_proto.empty(),
             https_in(last_of_list(headers.x_proto))),
      standard.passed_on || headers.x_for.find(',') != std::string::npos};
}

}  // namespace homewarden::http
