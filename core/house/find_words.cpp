#include "core/house/find_words.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr int kWhole = 6;
constexpr int kBeginning = 4;
constexpr int kInside = 1;
constexpr int kFirstText = 2;
constexpr int kFullyOn = 100;

bool parts_words(char letter) {
  return letter == ' ' || letter == ',' || letter == '-' || letter == '/' || letter == '.';
}

std::vector<std::string> split_words(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char letter : text) {
    if (!parts_words(letter)) {
      word += to_lower(letter);
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) words.push_back(word);
  return words;
}

std::optional<int> percent_of(std::string word) {
  if (word.ends_with('%')) word.pop_back();
  const bool digits = !word.empty() && std::all_of(word.begin(), word.end(), [](char letter) {
    return letter >= '0' && letter <= '9';
  });
  const auto number = digits ? to_integer16(word) : std::nullopt;
  return number && *number <= kFullyOn ? number : std::nullopt;
}

int match_word(const std::string& word, const std::vector<std::string>& called) {
  int best = 0;
  for (const std::string& candidate : called) {
    const auto at = candidate.find(word);
    if (at == std::string::npos) continue;
    best = std::max(best, at > 0 ? kInside : candidate == word ? kWhole : kBeginning);
  }
  return best;
}

}  // namespace

FindWords find_words(std::string_view text) {
  FindWords found{split_words(text), std::nullopt};
  auto& words = found.names;
  if (words.size() > 1 && words.back() == "%") words.pop_back();
  if (words.empty()) return found;
  if (words.back() == "on" || words.back() == "off") {
    found.command = DeviceOrder{words.back() == "on", kFullyOn};
    words.pop_back();
    return found;
  }
  const auto percent = percent_of(words.back());
  const bool dims = words.size() > 1;  // a number alone may be part of a name
  if (!percent || !dims) return found;
  found.command = DeviceOrder{*percent > 0, *percent > 0 ? *percent : kFullyOn};
  words.pop_back();
  if (words.back() == "dim" || words.back() == "at" || words.back() == "to") words.pop_back();
  return found;
}

int match(const std::vector<std::string>& names, std::string_view called,
          std::string_view also_called) {
  const auto first = split_words(called);
  const auto second = split_words(also_called);
  int sum = 1;
  for (const std::string& word : names) {
    const int in_first = match_word(word, first);
    const int score = std::max(in_first > 0 ? in_first + kFirstText : 0, match_word(word, second));
    if (score == 0) return 0;
    sum += score;
  }
  return sum;
}

}  // namespace homewarden
