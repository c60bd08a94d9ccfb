#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "core/notices.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "web/request_grammar.h"

namespace homewarden {

// Pages that were built, for as long as nothing they were built from has changed: their template,
// the list of rooms, any setting or state, the notices. The files are looked at at most once in
// kGlance, since under load that would cost more than the page; the rest each time.
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

  // How long a file that somebody else has edited may go unnoticed.
  static constexpr std::chrono::milliseconds kGlance{10};

  PageCache(const Clock& clock, Files& files, Registry& registry, const Notices& notices,
            const std::filesystem::path& rooms, const std::filesystem::path& document_folder);

  // This program has changed a file: the next page is of what it holds now.
  void look_again();

  // Nothing when no page can be kept now: a file is missing or has just been changed.
  std::optional<Sources> sources(PageFamily family);

  // The page of this name if it was built from these sources; nullptr otherwise. Valid until the
  // next keep().
  const std::string* find(const std::string& name, const Sources& sources) const;

  // Keeps a page that was built from what the sources, taken before, stand for. At most 64 pages
  // are kept; one more makes it forget the others.
  void keep(const std::string& name, const Sources& sources, const std::string& page);

 private:
  // A file as it was when it was looked at last.
  struct Looked {
    std::filesystem::path path;
    std::optional<std::chrono::milliseconds> at{};  // by uptime
    std::optional<FileStamp> stamp{};
  };
  struct Kept {
    Sources sources;
    std::string page;
  };

  const std::optional<FileStamp>& stamp(Looked& file);

  const Clock& clock_;
  Files& files_;
  Registry& registry_;
  const Notices& notices_;
  Looked rooms_;
  Looked normal_template_;
  Looked media_center_template_;
  std::map<std::string, Kept> kept_;
};

}  // namespace homewarden
