#include "web/page_cache.h"

#include <cstddef>
#include <utility>

namespace homewarden {
namespace {

// The rooms of a large house in both families. Requests can name any number of others.
constexpr std::size_t kMostPages = 64;

}  // namespace

PageCache::PageCache(const Clock& clock, Files& files, Registry& registry, const Notices& notices,
                     const std::filesystem::path& rooms,
                     const std::filesystem::path& document_folder)
    : clock_(clock),
      files_(files),
      registry_(registry),
      notices_(notices),
      rooms_{rooms},
      normal_template_{document_folder / kNormalPage},
      media_center_template_{document_folder / kMediaCenterPage} {}

void PageCache::look_again() {
  for (Looked* file : {&rooms_, &normal_template_, &media_center_template_}) file->at.reset();
}

const std::optional<FileStamp>& PageCache::stamp(Looked& file) {
  const auto now = clock_.uptime();
  if (!file.at || now - *file.at >= kGlance) {
    file.stamp = files_.stamp(file.path);
    file.at = now;
  }
  return file.stamp;
}

std::optional<PageCache::Sources> PageCache::sources(PageFamily family) {
  const bool normal = family == PageFamily::kNormal;
  const auto& page_template = stamp(normal ? normal_template_ : media_center_template_);
  const auto& rooms = stamp(rooms_);
  if (!page_template || !rooms) return std::nullopt;
  return Sources{*page_template, *rooms, registry_.changes(RegistryRoot::kLocalMachine),
                 registry_.changes(RegistryRoot::kCurrentUser), notices_.version()};
}

const std::string* PageCache::find(const std::string& name, const Sources& sources) const {
  const auto found = kept_.find(name);
  return found != kept_.end() && found->second.sources == sources ? &found->second.page : nullptr;
}

void PageCache::keep(const std::string& name, const Sources& sources, const std::string& page) {
  if (kept_.size() >= kMostPages && !kept_.contains(name)) kept_.clear();
  kept_.insert_or_assign(name, Kept{sources, page});
}

}  // namespace homewarden
