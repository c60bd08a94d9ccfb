#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace homewarden {

// What programs call a line of a list: made of its text alone.
std::string line_id(std::string_view prefix, std::string_view line);

// The same for the lines of one list, of which equal ones are told apart by their order.
class LineIds {
 public:
  explicit LineIds(std::string prefix) : prefix_(std::move(prefix)) {}

  std::string of(std::string_view line) {
    std::string id = line_id(prefix_, line);
    const int number = ++seen_[id];
    return number == 1 ? id : id + "-" + std::to_string(number);
  }

 private:
  std::string prefix_;
  std::map<std::string, int> seen_;
};

}  // namespace homewarden
