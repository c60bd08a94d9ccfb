#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace homewarden::http {

// What stands between <script> and </script> and between <style> and </style> in a file of HTML,
// scripts without those that name a file; the first of them, when there are very many. As browsers
// see it: lines end with LF alone.
struct InlineBlocks {
  std::vector<std::string> scripts{};
  std::vector<std::string> styles{};
};

// `html` is in the system code page, as the blocks are.
InlineBlocks inline_blocks(std::string_view html);

// The value of Content-Security-Policy: nothing from elsewhere, no attributes that run or draw, and
// of the blocks in the page those of these files, whatever was put into the page later.
std::string content_policy(const std::vector<InlineBlocks>& files = {});

}  // namespace homewarden::http
