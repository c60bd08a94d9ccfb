#pragma once

#include <string>

namespace homewarden::http {

// Why a request is not answered with what it asked for.
struct Refusal {
  unsigned status = 0;
  std::string reason;  // one line
  // One header more than every answer has; "" for none.
  std::string header{};
  std::string value{};
  std::string again{};       // see WebRefusal
  bool sets_cookie = false;  // as pages do
};

}  // namespace homewarden::http
