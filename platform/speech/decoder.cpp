#include "platform/speech/decoder.h"

#include <pocketsphinx.h>
#include <sphinxbase/err.h>
#include <sphinxbase/fsg_model.h>
#include <sphinxbase/jsgf.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace homewarden::speech {
namespace {

constexpr const char* kGrammarSearch = "grammar";
constexpr const char* kPhoneSearch = "phones";

struct Segment {
  std::string word;
  int first;
  int last;
  double score;  // acoustic, of all its frames
};

struct FreeDecoder {
  void operator()(ps_decoder_t* decoder) const { ps_free(decoder); }
};
struct FreeGrammar {
  void operator()(jsgf_t* grammar) const { jsgf_grammar_free(grammar); }
};
struct FreeModel {
  void operator()(fsg_model_t* model) const { fsg_model_free(model); }
};
struct FreeSettings {
  void operator()(cmd_ln_t* settings) const { cmd_ln_free_r(settings); }
};

// Silence and noises stand among the words: <s>, <sil>, [NOISE]. A second pronunciation has its
// number behind it.
bool is_filler(const std::string& word) {
  return word.empty() || word.front() == '<' || word.front() == '[' || word.front() == '+';
}

// At what it holds to be fatal, a damaged file above all, the library would end the program.
void refuse_to_die(void* /*user*/, err_lvl_t level, const char* /*format*/, ...) {
  if (level == ERR_FATAL) throw std::runtime_error("it cannot go on with its speech model");
}

class PocketSphinx : public Decoder {
 public:
  explicit PocketSphinx(ps_decoder_t* decoder) : decoder_(decoder) {}

  bool set_grammar(const std::string& jsgf, const Pronunciations& pronunciations) override {
    if (jsgf.empty()) {
      has_grammar_ = false;
      return true;
    }
    for (const auto& [word, pronunciation] : pronunciations)
      if (!add_word(word, pronunciation.phones)) return false;
    if (!set_model(jsgf)) return false;
    has_grammar_ = true;
    return true;
  }

  HeardWords decode(std::span<const std::int16_t> samples) override {
    HeardWords words;
    if (!has_grammar_ || samples.empty()) return words;
    const std::vector<Segment> heard = search(kGrammarSearch, samples);
    if (heard.empty()) return words;
    const std::vector<double> phones = by_frame(search(kPhoneSearch, samples));
    for (const Segment& segment : heard) {
      if (is_filler(segment.word)) continue;
      words.push_back({segment.word.substr(0, segment.word.find('(')), segment.first, segment.last,
                       score(segment, phones)});
    }
    return words;
  }

 private:
  // Step by step, for ps_set_jsgf_string() never frees what it has read.
  bool set_model(const std::string& jsgf) {
    const std::unique_ptr<jsgf_t, FreeGrammar> grammar(jsgf_parse_string(jsgf.c_str(), nullptr));
    jsgf_rule_t* said = grammar ? jsgf_get_public_rule(grammar.get()) : nullptr;
    if (!said) return false;
    const double weight = cmd_ln_float_r(ps_get_config(decoder_.get()), "-lw");
    const std::unique_ptr<fsg_model_t, FreeModel> model(jsgf_build_fsg(
        grammar.get(), said, ps_get_logmath(decoder_.get()), static_cast<float>(weight)));
    return model && ps_set_fsg(decoder_.get(), kGrammarSearch, model.get()) == 0;
  }

  bool add_word(const std::string& word, const std::vector<std::string>& ways) {
    int number = 0;
    for (const std::string& phones : ways) {
      const std::string name = ++number == 1 ? word : word + '(' + std::to_string(number) + ')';
      if (has_word(name)) continue;
      if (ps_add_word(decoder_.get(), name.c_str(), phones.c_str(), 0) < 0) return false;
    }
    return number > 0;
  }

  bool has_word(const std::string& word) const {
    char* phones = ps_lookup_word(decoder_.get(), word.c_str());
    std::free(phones);  // the library's allocator is malloc
    return phones != nullptr;
  }

  std::vector<Segment> search(const char* name, std::span<const std::int16_t> samples) {
    std::vector<Segment> segments;
    if (ps_set_search(decoder_.get(), name) != 0 || ps_start_utt(decoder_.get()) != 0)
      return segments;
    // As a whole, so that both searches see the same levels and count the same frames.
    ps_process_raw(decoder_.get(), samples.data(), samples.size(), FALSE, TRUE);
    ps_end_utt(decoder_.get());
    int path = 0;
    if (!ps_get_hyp(decoder_.get(), &path)) return segments;
    for (ps_seg_t* one = ps_seg_iter(decoder_.get()); one; one = ps_seg_next(one)) {
      Segment segment{ps_seg_word(one), 0, 0, 0};
      ps_seg_frames(one, &segment.first, &segment.last);
      int32 acoustic = 0, language = 0, back = 0;
      ps_seg_prob(one, &acoustic, &language, &back);
      segment.score = acoustic;
      segments.push_back(std::move(segment));
    }
    return segments;
  }

  static std::vector<double> by_frame(const std::vector<Segment>& segments) {
    std::vector<double> frames;
    for (const Segment& segment : segments) {
      if (segment.last < segment.first || segment.first < 0) continue;
      const auto end = static_cast<std::size_t>(segment.last) + 1;
      if (frames.size() < end) frames.resize(end);
      const double share = segment.score / (segment.last - segment.first + 1);
      std::fill(frames.begin() + segment.first, frames.begin() + segment.last + 1, share);
    }
    return frames;
  }

  static double score(const Segment& word, const std::vector<double>& phones) {
    double difference = word.score;
    for (int frame = word.first; frame <= word.last; ++frame) {
      const auto at = static_cast<std::size_t>(frame);
      if (at < phones.size()) difference -= phones[at];
    }
    return difference / std::max(1, word.last - word.first + 1);
  }

  const std::unique_ptr<ps_decoder_t, FreeDecoder> decoder_;
  bool has_grammar_ = false;
};

}  // namespace

std::unique_ptr<Decoder> Decoder::open(const std::filesystem::path& acoustic_model) try {
  err_set_logfp(nullptr);  // it would write all it does to the terminal
  err_set_callback(refuse_to_die, nullptr);
  const std::string folder = acoustic_model.string();
  // The widths of the search were measured in noise; with the usual ones one command in six is lost
  // at 10 dB. All senones are scored in every frame, which makes the scores of two searches
  // comparable.
  const std::unique_ptr<cmd_ln_t, FreeSettings> settings(
      cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", folder.c_str(), "-beam", "1e-80", "-pbeam",
                  "1e-80", "-wbeam", "1e-60", "-lw", "1", "-compallsen", "yes", "-allphone_ci",
                  "yes", "-remove_silence", "no", nullptr));
  if (!settings) return nullptr;
  ps_decoder_t* decoder = ps_init(settings.get());
  if (!decoder) return nullptr;
  auto opened = std::make_unique<PocketSphinx>(decoder);
  if (ps_set_allphone_file(decoder, kPhoneSearch, nullptr) != 0) return nullptr;
  return opened;
} catch (const std::runtime_error&) {
  return nullptr;
}

}  // namespace homewarden::speech
