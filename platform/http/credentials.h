#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace homewarden::http {

// The bytes that a base64 text stands for; nothing when it is none.
std::optional<std::string> base64_decoded(std::string_view text);

// A text in the system code page (Windows-1252) as UTF-8.
std::string utf8_of(std::string_view text);

// Who may log in: the lines "user:password" of a file. A user name has no colon, a password may.
class Credentials {
 public:
  Credentials() = default;
  // Lines without a colon are left out.
  explicit Credentials(std::string_view file_content);

  // Whether nobody may log in.
  bool empty() const { return lines_.empty(); }

  // Whether the value of an Authorization header is the Basic log-in of one of the lines. Browsers
  // send letters beyond ASCII in UTF-8 or as the file has them: both will do. How long it takes
  // tells nothing of the lines but their number and length.
  bool admit(std::string_view authorization) const;

 private:
  std::vector<std::string> lines_;
};

}  // namespace homewarden::http
