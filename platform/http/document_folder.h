#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/descriptor.h"

namespace homewarden {

// A file that is open to be sent.
struct Document {
  Descriptor file;
  std::uint64_t size = 0;
  std::string type;           // "image/gif"
  std::string last_modified;  // as in the header of this name
  std::string tag;            // changes whenever the content does, in quotes
  bool is_page = false;       // HTML, which is made new with every answer
};

// The files that anybody who is admitted may have.
class DocumentFolder {
 public:
  explicit DocumentFolder(std::filesystem::path folder);

  // Nothing unless `page`, a path of safe_path(), is a regular file in the folder, with no symbolic
  // link on the way, and not the file with the passwords under another name. Never waits.
  std::optional<Document> open(const std::string& page) const;

  // The content of `htaccess.txt`, of whatever letter case; "" when there is none or it cannot be
  // read.
  std::string passwords() const;

 private:
  const std::filesystem::path folder_;
  const std::filesystem::path passwords_;  // under its own name, as it was found
};

// The name of the media type of a file, by the end of its name.
std::string media_type(const std::string& page);

}  // namespace homewarden
