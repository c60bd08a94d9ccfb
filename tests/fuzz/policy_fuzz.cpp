// A template of a person's own, whatever it holds: the blocks found in it are parts of it, and a
// text without the letters of their tags has none.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "platform/http/content_policy.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace homewarden;
  const std::string html = replace_all(
      replace_all({reinterpret_cast<const char*>(data), size}, "\r\n", "\n"), "\r", "\n");
  const http::InlineBlocks blocks = http::inline_blocks(html);
  for (const auto* kind : {&blocks.scripts, &blocks.styles})
    for (const std::string& block : *kind)
      if (html.find(block) == std::string::npos) std::abort();
  if (!blocks.scripts.empty() && !contains_ignoring_case(html, "<script")) std::abort();
  if (!blocks.styles.empty() && !contains_ignoring_case(html, "<style")) std::abort();
  if (http::content_policy({blocks}).find('\n') != std::string::npos) std::abort();
  return 0;
}
