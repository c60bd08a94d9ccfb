#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "core/notices.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "web/request_grammar.h"

namespace homewarden {

// Pages that were built, for as long as nothing they were built from has changed: their template,
// the list of rooms, any setting or state, the notices. Whether it has is asked of the disk each
// time, since the background service changes states and people edit templates.
class PageCache {
 public:
  // What a page is built from, at one moment.
  struct Sources {
    FileStamp page_template;
    FileStamp rooms;
    std::uint64_t machine = 0;
    std::uint64_t user = 0;
    std::uint64_t notices = 0;

    bool operator==(const Sources&) const = default;
  };

  PageCache(Files& files, Registry& registry, const Notices& notices, std::filesystem::path rooms,
            const std::filesystem::path& document_folder);

  // Nothing when no page can be kept now: a file is missing or has just been changed.
  std::optional<Sources> sources(PageFamily family);

  // The page of this name if it was built from these sources; nullptr otherwise. Valid until the
  // next keep().
  const std::string* find(const std::string& name, const Sources& sources) const;

  // Keeps a page that was built from what the sources, taken before, stand for. At most 64 pages
  // are kept; one more makes it forget the others.
  void keep(const std::string& name, const Sources& sources, const std::string& page);

 private:
  struct Kept {
    Sources sources;
    std::string page;
  };

  Files& files_;
  Registry& registry_;
  const Notices& notices_;
  const std::filesystem::path rooms_;
  const std::filesystem::path normal_template_;
  const std::filesystem::path media_center_template_;
  std::map<std::string, Kept> kept_;
};

}  // namespace homewarden
