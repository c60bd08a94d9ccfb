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
      word += plain_letter(letter);
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

struct WordMatch {
  int score = 0;
  std::size_t position = 0;
};

WordMatch match_word(const std::string& word, const std::vector<std::string>& called) {
  WordMatch best;
  for (std::size_t i = 0; i < called.size(); ++i) {
    const auto at = called[i].find(word);
    if (at == std::string::npos) continue;
    const int score = at > 0 ? kInside : called[i] == word ? kWhole : kBeginning;
    if (score > best.score) best = {score, i};
  }
  return best;
}

}  // namespace

FindWords find_words(std::string_view text) {
  FindWords found{split_words(text), std::nullopt};
  auto& words = found.names;
  const bool percent_follows = words.size() > 1 && words.back() == "%";
  if (percent_follows) words.pop_back();
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
  const std::string number = words.back();
  words.pop_back();
  if (words.back() == "dim" || words.back() == "at" || words.back() == "to")
    words.pop_back();
  else if (!number.ends_with('%') && !percent_follows)
    found.number = number;
  return found;
}

bool names_number(const FindWords& words, std::string_view called, std::string_view also_called) {
  if (words.number.empty()) return false;
  const auto has_number = [&words](std::string_view text) {
    const auto parts = split_words(text);
    return std::find(parts.begin(), parts.end(), words.number) != parts.end();
  };
  std::vector<std::string> names = words.names;
  names.push_back(words.number);
  return (has_number(called) || has_number(also_called)) && match(names, called, also_called) > 0;
}

int match(const std::vector<std::string>& names, std::string_view called,
          std::string_view also_called) {
  auto first = split_words(called);
  auto second = split_words(also_called);
  int sum = 1;
  for (const std::string& word : names) {
    const WordMatch in_first = match_word(word, first);
    const WordMatch in_second = match_word(word, second);
    if (in_first.score == 0 && in_second.score == 0) return 0;
    // "l" behind "liv" means another word.
    if (in_first.score > 0 && in_first.score + kFirstText >= in_second.score) {
      sum += in_first.score + kFirstText;
      first[in_first.position].clear();
    } else {
      sum += in_second.score;
      second[in_second.position].clear();
    }
  }
  // "lamp" means "Lamp" before "Lamp 2".
  const bool is_all = !names.empty() && std::all_of(first.begin(), first.end(),
                                                    [](const auto& word) { return word.empty(); });
  return is_all ? sum + 1 : sum;
}

}  // namespace homewarden
