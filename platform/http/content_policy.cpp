#include "platform/http/content_policy.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/code_page.h"
#include "base/text.h"
#include "platform/http/keyed_hash.h"

namespace homewarden::http {
namespace {

// So that the header stays within what browsers and proxies take.
constexpr std::size_t kMostBlocks = 16;  // of a kind in a file

constexpr std::string_view kBlanks = " \t\n\r\f";

struct Tag {
  std::string name;  // in lower case; "" for an end tag
  bool names_file = false;
};

// HTML, from left to right.
class Scanner {
 public:
  explicit Scanner(std::string_view html) : html_(html) {}

  // Up to the next element and behind its first tag; false at the end of the file.
  bool to_element(Tag& tag) {
    while (true) {
      skip_until("<");
      if (place_ == html_.size()) return false;
      if (rest().starts_with("<!--")) {
        place_ += 2;
        place_ = std::min(html_.find("-->", place_), html_.size());
        continue;
      }
      ++place_;
      if (rest().empty() || (is_letter(rest().front()) || rest().front() == '/')) break;
    }
    tag = read_tag();
    return true;
  }

  // What stands before the end tag of this name, and behind the tag.
  std::string_view text_of(const std::string& name) {
    const std::size_t start = place_;
    const std::string end = "</" + name;
    while (place_ < html_.size()) {
      const std::size_t found = find_ignoring_case(rest(), end);
      place_ = found == std::string_view::npos ? html_.size() : place_ + found;
      const std::string_view behind = rest().substr(std::min(end.size(), rest().size()));
      if (behind.empty() || behind.front() == '/' || behind.front() == '>' ||
          kBlanks.find(behind.front()) != std::string_view::npos)
        break;
      ++place_;
    }
    return html_.substr(start, place_ - start);
  }

 private:
  static bool is_letter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
  }

  std::string_view rest() const { return html_.substr(place_); }
  std::string_view skip_until(std::string_view letters) {
    const std::size_t start = place_;
    place_ = std::min(html_.find_first_of(letters, place_), html_.size());
    return html_.substr(start, place_ - start);
  }
  void skip(std::string_view letters) {
    place_ = std::min(html_.find_first_not_of(letters, place_), html_.size());
  }

  Tag read_tag() {
    Tag tag{to_lower(skip_until(" \t\n\r\f/>"))};
    while (true) {
      skip(" \t\n\r\f/=");
      if (rest().empty() || rest().front() == '>') break;
      if (equals_ignoring_case(skip_until(" \t\n\r\f/>="), "src")) tag.names_file = true;
      skip(kBlanks);
      if (rest().starts_with('=')) skip_value();
    }
    place_ = std::min(place_ + 1, html_.size());
    return tag;
  }

  // Quotes count only where a value begins.
  void skip_value() {
    ++place_;
    skip(kBlanks);
    const bool is_quoted = rest().starts_with('"') || rest().starts_with('\'');
    const std::string_view end = is_quoted ? rest().substr(0, 1) : " \t\n\r\f>";
    if (is_quoted) ++place_;
    skip_until(end);
    if (is_quoted) place_ = std::min(place_ + 1, html_.size());
  }

  const std::string_view html_;
  std::size_t place_ = 0;
};

// What is text up to its end tag whatever it looks like.
bool holds_text(const std::string& name) {
  constexpr std::array<std::string_view, 8> kNames{"script", "style",  "title",   "textarea",
                                                   "xmp",    "iframe", "noembed", "noframes"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

std::string hashes_of(const std::vector<InlineBlocks>& files,
                      std::vector<std::string> InlineBlocks::*kind) {
  std::string hashes;
  for (const InlineBlocks& file : files)
    for (const std::string& block : file.*kind)
      hashes += " 'sha256-" + base64_of(hash_of(to_utf8(block))) + "'";
  return hashes;
}

}  // namespace

InlineBlocks inline_blocks(std::string_view html) {
  InlineBlocks blocks;
  Scanner scanner(html);
  Tag tag;
  while (scanner.to_element(tag)) {
    if (!holds_text(tag.name)) continue;
    const std::string_view text = scanner.text_of(tag.name);
    if (tag.names_file || (tag.name != "script" && tag.name != "style")) continue;
    auto& kind = tag.name == "script" ? blocks.scripts : blocks.styles;
    if (kind.size() < kMostBlocks)
      kind.push_back(replace_all(replace_all(text, "\r\n", "\n"), "\r", "\n"));
  }
  return blocks;
}

std::string content_policy(const std::vector<InlineBlocks>& files) {
  return "default-src 'none'; img-src 'self'; font-src 'self'; style-src 'self'" +
         hashes_of(files, &InlineBlocks::styles) + "; script-src 'self'" +
         hashes_of(files, &InlineBlocks::scripts) +
         "; connect-src 'self'; manifest-src 'self'; worker-src 'self'; base-uri 'none'; "
         "form-action 'none'; frame-ancestors 'none'";
}

}  // namespace homewarden::http
