#include "platform/speech/pronunciation.h"

#include <fstream>
#include <sstream>
#include <string_view>

#include "base/lines.h"
#include "platform/speech/flite_english.h"

namespace homewarden::speech {
namespace {

std::string content_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  if (stream) content << stream.rdbuf();
  return std::move(content).str();
}

}  // namespace

Pronunciations pronounce(const std::set<std::string>& words,
                         const std::filesystem::path& dictionary) {
  Pronunciations found;
  if (words.empty()) return found;
  const std::string content = content_of(dictionary);
  const std::set<std::string, std::less<>> wanted(words.begin(), words.end());
  LineReader lines(content);
  while (const auto line = lines.next()) {
    const std::size_t blank = line->find(' ');
    if (blank == std::string_view::npos) continue;
    std::string_view word = line->substr(0, blank);
    word = word.substr(0, word.find('('));
    if (const auto one = wanted.find(word); one != wanted.end())
      found[*one].phones.emplace_back(line->substr(blank + 1));
  }
  for (const std::string& word : words) {
    Pronunciation& one = found[word];
    if (!one.phones.empty()) continue;
    one.guessed = true;
    const std::string phones = english_phones(word);
    one.phones.push_back(phones.empty() ? "AH" : phones);
  }
  return found;
}

}  // namespace homewarden::speech
