#include "platform/speech/flite_english.h"

#include <cctype>
#include <map>
#include <mutex>

extern "C" {
#include <flite/flite.h>

// Of the libraries of the language and its lexicon, which bring no header.
void usenglish_init(cst_voice* voice);
cst_lexicon* cmu_lex_init(void);
}

namespace homewarden::speech {
namespace {

// Loaded once, for the life of the program: the library keeps what it loads too.
class English {
 public:
  English() : voice_(new_voice()), lexicon_(cmu_lex_init()) {
    usenglish_init(voice_);
    feat_set(voice_->features, "lexicon", lexicon_val(lexicon_));
  }

  cst_voice* voice() const { return voice_; }
  cst_lexicon* lexicon() const { return lexicon_; }

 private:
  cst_voice* voice_;
  cst_lexicon* lexicon_;
};

// The library keeps state of its own between calls.
std::mutex turn;

const English& english() {
  static English loaded;
  return loaded;
}

class Utterance {
 public:
  explicit Utterance(const std::string& text) : utterance_(new_utterance()) {
    utt_init(utterance_, english().voice());
    utt_set_input_text(utterance_, text.c_str());
    default_tokenization(utterance_);
    default_textanalysis(utterance_);
  }
  Utterance(const Utterance&) = delete;
  Utterance& operator=(const Utterance&) = delete;
  ~Utterance() { delete_utterance(utterance_); }

  // Nothing before the first and behind the last.
  cst_item* first_word() const {
    cst_relation* words = utt_relation(utterance_, "Word");
    return words ? relation_head(words) : nullptr;
  }

 private:
  cst_utterance* utterance_;
};

std::string plain_word(const char* name) {
  std::string word;
  for (; name && *name; ++name) {
    const auto c = static_cast<unsigned char>(*name);
    if (std::isalpha(c) || c == '\'') word += static_cast<char>(std::tolower(c));
  }
  return word.find_first_not_of('\'') == std::string::npos ? "" : word;
}

// Flite's names are the model's in small letters, with the stress as a digit behind the vowels, and
// three more: two weak vowels and the pause.
std::string model_phone(const char* name) {
  std::string phone;
  for (; name && *name; ++name) {
    const auto c = static_cast<unsigned char>(*name);
    if (std::isalpha(c)) phone += static_cast<char>(std::toupper(c));
  }
  if (phone == "AX") return "AH";
  if (phone == "AXR") return "ER";
  return phone == "PAU" ? "" : phone;
}

std::string look_up(const std::string& word) {
  // What an apostrophe adds does not follow from the spelling.
  const bool is_genitive = word.size() > 2 && word.ends_with("'s");
  const std::string stem = is_genitive ? word.substr(0, word.size() - 2) : word;
  std::string phones;
  std::string last;
  cst_val* found = lex_lookup(english().lexicon(), stem.c_str(), nullptr, nullptr);
  for (const cst_val* one = found; one; one = val_cdr(one)) {
    const std::string phone = model_phone(val_string(val_car(one)));
    if (phone.empty()) continue;
    if (!phones.empty()) phones += ' ';
    phones += last = phone;
  }
  delete_val_list(found);
  if (!is_genitive || phones.empty()) return phones;
  const std::string marked = " " + last + " ";
  if (std::string(" S Z SH ZH CH JH ").find(marked) != std::string::npos) return phones + " IH Z";
  return phones + (std::string(" P T K F TH ").find(marked) != std::string::npos ? " S" : " Z");
}

}  // namespace

std::vector<std::string> english_words(const std::string& text) {
  const std::lock_guard guard(turn);
  std::vector<std::string> words;
  const Utterance utterance(text);
  for (cst_item* item = utterance.first_word(); item; item = item_next(item)) {
    const std::string word = plain_word(item_name(item));
    // The text analysis makes two words of a name with an apostrophe.
    if (!words.empty() && word == "'s")
      words.back() += word;
    else if (!word.empty())
      words.push_back(word);
  }
  return words;
}

std::string english_phones(const std::string& word) {
  const std::lock_guard guard(turn);
  // The library loses some bytes with each look-up, so each word is looked up once.
  static std::map<std::string, std::string> known;
  const auto [one, is_new] = known.try_emplace(word);
  if (is_new) one->second = look_up(word);
  return one->second;
}

}  // namespace homewarden::speech
