#include "web/page_cache.h"

#include <cstddef>
#include <utility>

namespace homewarden {
namespace {

// The rooms of a large house in both families. Requests can name any number of others.
constexpr std::size_t kMostPages = 64;

}  // namespace

PageCache::PageCache(Files& files, Registry& registry, const Notices& notices,
                     std::filesystem::path rooms, const std::filesystem::path& document_folder)
    : files_(files),
      registry_(registry),
      notices_(notices),
      rooms_(std::move(rooms)),
      normal_template_(document_folder / kNormalPage),
      media_center_template_(document_folder / kMediaCenterPage) {}

std::optional<PageCache::Sources> PageCache::sources(PageFamily family) {
  const bool normal = family == PageFamily::kNormal;
  const auto page_template = files_.stamp(normal ? normal_template_ : media_center_template_);
  const auto rooms = files_.stamp(rooms_);
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
