#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/http/content_policy.h"
#include "platform/web_host.h"

namespace homewarden::http {

// A file that is open to be sent.
struct Document {
  Handle file;
  std::uint64_t size = 0;
  std::string type;           // "image/gif"
  std::string last_modified;  // as in the header of this name
  std::string tag;            // changes whenever the content does, in quotes
  bool is_page = false;       // HTML, which is made new with every answer
  std::string policy{};       // see content_policy()
};

// The files that anybody who is admitted may have.
class DocumentFolder {
 public:
  explicit DocumentFolder(std::unique_ptr<WebFolder> folder) : folder_(std::move(folder)) {}

  // `page`: a path of safe_path(). Nothing for what is not to be had, see WebFolder::open().
  std::optional<Document> open(const std::string& page);

  // What the pages may do that are built of the templates in the folder.
  std::string policy_of_pages();

  // See WebFolder.
  std::string passwords() { return folder_->passwords(); }

  // The secret of the folder: 32 bytes, the same at every start as long as they can be kept.
  std::string key();

 private:
  const InlineBlocks& blocks_of(const std::string& page, const OpenFile& file);

  struct Known {
    std::string tag;
    InlineBlocks blocks;
  };

  std::unique_ptr<WebFolder> folder_;
  std::map<std::string, Known> known_;  // what stands in files of HTML, by their names
};

// Whether it is one of the two files of which pages are built.
bool is_template(const std::string& page);

// The name of the media type of a file, by the end of its name, letter case ignored;
// "application/octet-stream" for an end that is not known.
std::string media_type(const std::string& page);

}  // namespace homewarden::http
