#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/devices.h"
#include "platform/files.h"

namespace homewarden {

// The room list as the pages show it: in the order of the file, and as the file is now. It is read
// again only when it has changed, so that a long list costs one page a moment and not every page.
class PageRooms {
 public:
  static constexpr std::size_t kPlaces = 10;  // devices on a page

  PageRooms(Files& files, std::filesystem::path list);

  // Looks whether the list has changed. The others answer for what it was at the last call.
  void refresh();

  bool is_there() const { return is_there_; }
  // False too when it is there and cannot be read.
  bool is_known() const { return content_.has_value(); }
  // The names on the room lines. Valid until the next refresh().
  const std::vector<std::string>& names() const { return names_; }
  // The first ten devices of the room of this name without blanks, letter case ignored; without
  // such a room, of the lines on which the name stands anywhere.
  std::vector<Device> devices_of(std::string_view slug) const;
  // The name to ask devices_of() for when an address was typed: what finds nothing as it stands and
  // something when it is read as UTF-8 is in the code page here. Everything else comes back.
  std::string slug_meant(std::string_view slug) const;

 private:
  void read_lines();
  bool is_found(std::string_view slug) const;

  Files& files_;
  const std::filesystem::path list_;
  bool is_there_ = false;
  std::optional<FileStamp> stamp_;
  std::optional<std::string> content_;
  std::vector<std::string> names_;
  // The lines of the devices on the page of each room, by its name without blanks in lower case.
  std::unordered_map<std::string, std::vector<std::string_view>> rooms_;
};

}  // namespace homewarden
