#include "platform/http/document_folder.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "platform/http/keyed_hash.h"

namespace homewarden::http {
namespace {

constexpr std::array kTemplates{"index.html", "wmcindex.html"};

constexpr auto kPageType = "text/html; charset=windows-1252";

constexpr std::array<std::pair<std::string_view, const char*>, 13> kTypes{{
    {".gif", "image/gif"},
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".jpeg", "image/jpeg"},
    {".svg", "image/svg+xml"},
    {".webp", "image/webp"},
    {".ico", "image/x-icon"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".txt", "text/plain; charset=windows-1252"},
    {".html", kPageType},
    {".htm", kPageType},
    {".webmanifest", "application/manifest+json"},
}};

// By hand: the names of the days and months must not follow the locale.
std::string http_date(std::int64_t modified) {
  using namespace std::chrono;
  constexpr std::array kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const auto seconds = floor<std::chrono::seconds>(sys_time<nanoseconds>(nanoseconds(modified)));
  const auto days = floor<std::chrono::days>(seconds);
  const year_month_day date(days);
  const hh_mm_ss time(seconds - days);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s, %02u %s %d %02d:%02d:%02d GMT",
                kDays[weekday(days).c_encoding()], static_cast<unsigned>(date.day()),
                kMonths[static_cast<unsigned>(date.month()) - 1], static_cast<int>(date.year()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text.data();
}

std::string tag_of(const OpenFile& file) {
  std::array<char, 80> text{};
  std::snprintf(
      text.data(), text.size(), "\"%llx-%llx-%llx\"", static_cast<unsigned long long>(file.number),
      static_cast<unsigned long long>(file.modified), static_cast<unsigned long long>(file.size));
  return text.data();
}

}  // namespace

bool is_template(const std::string& page) {
  return std::find(kTemplates.begin(), kTemplates.end(), page) != kTemplates.end();
}

std::string media_type(const std::string& page) {
  const std::string name = to_lower(page);
  for (const auto& [end, type] : kTypes)
    if (name.ends_with(end)) return type;
  return "application/octet-stream";
}

std::string DocumentFolder::key() {
  constexpr std::size_t kSize = 32;
  std::string key = folder_->key();
  if (key.size() == kSize) return key;
  key = random_bytes(kSize);
  folder_->keep_key(key);
  return key;
}

std::string DocumentFolder::policy_of_pages() {
  std::vector<InlineBlocks> blocks;
  for (const char* name : kTemplates)
    if (const auto file = folder_->open(name)) blocks.push_back(blocks_of(name, *file));
  return content_policy(blocks);
}

const InlineBlocks& DocumentFolder::blocks_of(const std::string& page, const OpenFile& file) {
  constexpr std::size_t kMostRemembered = 64;
  constexpr std::size_t kMostRead = 1024UL * 1024;
  if (known_.size() > kMostRemembered) known_.clear();
  Known& known = known_[page];
  if (std::string tag = tag_of(file); tag != known.tag) {
    known.tag = std::move(tag);
    known.blocks = inline_blocks(folder_->read(file, kMostRead));
  }
  return known.blocks;
}

std::optional<Document> DocumentFolder::open(const std::string& page) {
  auto found = folder_->open(page);
  if (!found) return std::nullopt;
  Document document;
  document.size = found->size;
  document.type = media_type(page);
  document.last_modified = http_date(found->modified);
  document.tag = tag_of(*found);
  document.is_page = document.type == kPageType;
  document.policy = document.is_page ? content_policy({blocks_of(page, *found)}) : content_policy();
  document.file = std::move(found->file);
  return document;
}

}  // namespace homewarden::http
