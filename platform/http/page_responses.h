#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/http/response.h"

namespace homewarden::http {

// The responses of the pages that were sent last, so that a page that is asked for again and again
// is copied and given its headers once.
class PageResponses {
 public:
  // Response::page() of this text, with the policy as it was when the text was new: what it is made
  // from stands in the text. New or as it was made before. Valid until the next call; what
  // was queued is sent all the same.
  const Response& of(const std::string& html, const std::function<std::string()>& policy);

 private:
  struct Kept {
    std::string html;
    Response response;
  };

  std::vector<Kept> kept_;
  std::size_t oldest_ = 0;
};

}  // namespace homewarden::http
