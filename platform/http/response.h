#pragma once

#include <microhttpd.h>

#include <string>

#include "platform/http/content_policy.h"
#include "platform/http/document_folder.h"
#include "platform/http/gate.h"
#include "platform/http/request_head.h"
#include "platform/http/stream.h"
#include "platform/web_api.h"

namespace homewarden::http {

// An answer. Every one carries the headers that keep a browser from taking it for something else or
// showing it inside a page of somebody else's.
class Response {
 public:
  // A page is not stored by browsers: it shows the house as it is now. It sets kHouseCookie.
  // `policy`: see content_policy().
  static Response page(const std::string& html, const std::string& policy);
  // The page, or for "" the reason as plain text, with the status and the headers that the refusal
  // names.
  static Response refusal(const Refusal& refusal, const std::string& html = {});
  // The reason as programs read it.
  static Response problem(const Refusal& refusal);
  // What a program is answered, and one of a stream that `reader` is read for (see Stream), which
  // must last until the library has done with the answer.
  static Response program(const ApiAnswer& answer);
  static Response stream(Stream& reader);
  // To the page of this relative address.
  static Response redirect(const std::string& to);
  // The document, or word that the client has it already (304, without content).
  static Response document(Document document, const RequestHead& head);

  Response(Response&& other) noexcept;
  Response(const Response&) = delete;
  Response& operator=(const Response&) = delete;
  Response& operator=(Response&& other) noexcept;
  ~Response();

  // One header more.
  void header(const char* name, const std::string& value);

  // False when the connection cannot be answered any more.
  bool queue_on(MHD_Connection* connection) const;

 private:
  Response(unsigned status, MHD_Response* response, const std::string& policy = content_policy());

  unsigned status_;
  MHD_Response* response_;
};

}  // namespace homewarden::http
