#include "web/page_rooms.h"

#include <utility>

#include "base/lines.h"
#include "base/text.h"
#include "web/request_grammar.h"

namespace homewarden {
namespace {

constexpr std::string_view kRoomMark = "~~~";

bool is_room_line(std::string_view line) {
  return line.find(kRoomMark) != std::string_view::npos;
}

}  // namespace

PageRooms::PageRooms(Files& files, std::filesystem::path list)
    : files_(files), list_(std::move(list)) {}

void PageRooms::refresh() {
  const auto stamp = files_.stamp(list_);
  if (stamp && stamp == stamp_) return;
  is_there_ = files_.exists(list_);
  auto content = is_there_ ? files_.read(list_) : std::nullopt;
  stamp_ = content ? stamp : std::nullopt;
  if (content == content_) return;
  content_ = std::move(content);
  read_lines();
}

void PageRooms::read_lines() {
  names_.clear();
  rooms_.clear();
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string_view text = content_ ? *content_ : std::string_view();
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

  // Most lines are of the same room as the line before.
  std::string_view room;
  std::vector<std::string_view>* devices = nullptr;
  LineReader reader(text);
  while (const auto line = reader.next()) {
    if (line->empty()) continue;
    const std::string_view room_here = line->substr(0, line->find('~'));
    if (!devices || room_here != room) {
      room = room_here;
      devices = &rooms_[to_lower(without_blanks(room))];
    }
    if (is_room_line(*line)) {
      names_.push_back(replace_all(*line, kRoomMark, ""));
    } else if (devices->size() < kPlaces) {
      const auto entry = parse_list_line(*line);
      if (entry && entry->device) devices->push_back(*line);
    }
  }
}

std::vector<Device> PageRooms::devices_of(std::string_view slug) const {
  std::vector<Device> devices;
  const auto add = [&devices](std::string_view line) {
    auto entry = parse_list_line(line);
    if (entry && entry->device) devices.push_back(std::move(*entry->device));
  };
  const auto room = rooms_.find(to_lower(slug));
  if (room != rooms_.end()) {
    for (const std::string_view line : room->second) add(line);
    return devices;
  }
  LineReader reader(content_ ? *content_ : std::string_view());
  while (devices.size() < kPlaces) {
    const auto line = reader.next();
    if (!line) break;
    if (!is_room_line(*line) && contains_ignoring_case(without_blanks(*line), slug)) add(*line);
  }
  return devices;
}

std::string PageRooms::slug_meant(std::string_view slug) const {
  auto typed = typed_name(slug);
  if (!typed || is_found(slug) || !is_found(*typed)) return std::string(slug);
  return std::move(*typed);
}

// A room without devices is found too.
bool PageRooms::is_found(std::string_view slug) const {
  return rooms_.contains(to_lower(slug)) || !devices_of(slug).empty();
}

}  // namespace homewarden
