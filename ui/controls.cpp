#include "ui/controls.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

std::uint16_t collation_weight(unsigned char byte) {
  if (byte >= '0' && byte <= '9') return static_cast<std::uint16_t>(0x1000 + byte);
  unsigned char letter = byte;
  if (byte >= 'A' && byte <= 'Z') letter = static_cast<unsigned char>(byte + 0x20);
  if (letter >= 'a' && letter <= 'z')
    return static_cast<std::uint16_t>(0x2000 + ((letter - 'a') << 8));
  if (byte >= 0x80) {
    const char plain = plain_letter(static_cast<char>(byte));
    if (plain >= 'a' && plain <= 'z') {
      unsigned char lower = byte;
      if (byte >= 0xC0 && byte <= 0xDE) lower = static_cast<unsigned char>(byte + 0x20);
      if (byte == 0x8A || byte == 0x8C || byte == 0x8E)
        lower = static_cast<unsigned char>(byte + 0x10);
      if (byte == 0x9F) lower = 0xFF;
      return static_cast<std::uint16_t>(0x2000 + ((plain - 'a') << 8) + lower);
    }
  }
  return byte;
}

const std::array<std::uint16_t, 256>& collation_weights() {
  static const auto kWeights = [] {
    std::array<std::uint16_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
      table[byte] = collation_weight(static_cast<unsigned char>(byte));
    return table;
  }();
  return kWeights;
}

}  // namespace

bool sorts_before(std::string_view a, std::string_view b) {
  const auto& weights = collation_weights();
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [&weights](char left, char right) {
                                        return weights[static_cast<unsigned char>(left)] <
                                               weights[static_cast<unsigned char>(right)];
                                      });
}

void ComboBox::clear() {
  items = std::vector<std::string>();
  text = std::string();
}

void ComboBox::add(const std::string& item) {
  auto list = items.get();
  const auto place =
      sorted ? std::upper_bound(list.begin(), list.end(), item, sorts_before) : list.end();
  list.insert(place, item);
  items = std::move(list);
}

void ListBox::clear() {
  selected = -1;
  marks = std::map<int, std::string>();
  items = std::vector<std::string>();
}

void ListBox::add(const std::string& item) {
  auto list = items.get();
  const auto place =
      sorted ? std::upper_bound(list.begin(), list.end(), item, sorts_before) : list.end();
  const auto row = static_cast<int>(place - list.begin());
  list.insert(place, item);
  std::map<int, std::string> moved;
  for (const auto& [marked, why] : marks.get()) moved[marked < row ? marked : marked + 1] = why;
  items = std::move(list);
  marks = std::move(moved);
}

void ListBox::add_all(std::vector<std::string> more) {
  auto list = items.get();
  list.insert(list.end(), std::make_move_iterator(more.begin()),
              std::make_move_iterator(more.end()));
  if (sorted) {
    marks = std::map<int, std::string>();
    std::stable_sort(list.begin(), list.end(), sorts_before);
  }
  items = std::move(list);
}

namespace {

// Where each row goes when they are sorted by the column: first the row that comes first.
std::vector<std::size_t> sorted_order(const std::vector<ListView::Row>& rows, int column) {
  std::vector<std::size_t> order(rows.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto cell = [&rows, column](std::size_t row) -> std::string_view {
    const auto index = static_cast<std::size_t>(column);
    return index < rows[row].size() ? std::string_view(rows[row][index]) : std::string_view();
  };
  std::stable_sort(order.begin(), order.end(), [&cell](std::size_t a, std::size_t b) {
    return sorts_before(cell(a), cell(b));
  });
  return order;
}

std::vector<ListView::Row> reordered(std::vector<ListView::Row> rows,
                                     const std::vector<std::size_t>& order) {
  std::vector<ListView::Row> result;
  result.reserve(rows.size());
  for (const std::size_t row : order) result.push_back(std::move(rows[row]));
  return result;
}

std::map<int, std::string> reordered(const std::map<int, std::string>& marks,
                                     const std::vector<std::size_t>& order) {
  std::map<int, std::string> result;
  if (marks.empty()) return result;
  for (std::size_t place = 0; place < order.size(); ++place) {
    const auto mark = marks.find(static_cast<int>(order[place]));
    if (mark != marks.end()) result.emplace(static_cast<int>(place), mark->second);
  }
  return result;
}

}  // namespace

void ListView::show(std::vector<Row> new_rows, int column,
                    const std::map<int, std::string>& new_marks) {
  const auto order = sorted_order(new_rows, column);
  selected = -1;
  sort_key = column;
  rows = reordered(std::move(new_rows), order);
  marks = reordered(new_marks, order);
}

void ListView::sort_by(int column) {
  const auto order = sorted_order(rows, column);
  const auto was_selected = static_cast<std::size_t>(selected.get());
  const bool has_selection = selected >= 0;
  selected = -1;
  sort_key = column;
  rows = reordered(rows, order);
  marks = reordered(marks.get(), order);
  if (!has_selection) return;
  const auto place = std::find(order.begin(), order.end(), was_selected);
  selected = place == order.end() ? -1 : static_cast<int>(place - order.begin());
}

void Timer::set_interval(int milliseconds) {
  interval_ = milliseconds;
  rearmed();
}

void Timer::set_enabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  rearmed();
}

}  // namespace homewarden
