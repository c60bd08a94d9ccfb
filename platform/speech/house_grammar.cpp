#include "platform/speech/house_grammar.h"

#include <initializer_list>
#include <utility>

#include "platform/speech/spoken_words.h"
#include "platform/speech/voice_form.h"

namespace homewarden::speech {
namespace {

using Words = std::vector<std::string>;

std::string joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text += ' ';
    text += word;
  }
  return text;
}

std::string sequence(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (part.empty()) continue;
    if (!text.empty()) text += ' ';
    text += part;
  }
  return text;
}

// A weight has an effect only before a word, not before the name of a rule.
std::string choice(const std::set<std::string>& texts, const std::string& weight = "") {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : " | ") + weight + text;
  return "( " + list + " )";
}

// How likely what is no command is beside what is one. Both were measured in noise, where without
// them one command in ten was heard as something odd with the neighbours' words in it.
constexpr const char* kNear = "/1e-5/ ";
constexpr const char* kOdd = "/1e-20/ ";

class Builder {
 public:
  Builder(const std::vector<VoiceCommand>& commands, const SpokenAs& spoken_as)
      : commands_(commands), spoken_as_(spoken_as) {}

  HouseGrammar build() {
    for (std::size_t i = 0; i < commands_.size(); ++i) add(i);
    // Behind all full forms, so that none of these is what another command is called.
    for (auto& [words, command] : short_forms_)
      if (command != kSeveral && grammar_.meaning.emplace(words, command).second)
        alternatives_.insert(words);
    write();
    return std::move(grammar_);
  }

 private:
  static constexpr std::size_t kSeveral = static_cast<std::size_t>(-1);

  const std::string& words_of(const std::string& name) {
    const auto [one, is_new] = known_.try_emplace(name);
    if (is_new) {
      const auto respelling = spoken_as_.find(name);
      Words words = spoken_words(respelling == spoken_as_.end() ? name : respelling->second);
      if (words.empty() && respelling != spoken_as_.end()) words = spoken_words(name);
      one->second = joined(words);
      grammar_.words.insert(words.begin(), words.end());
      grammar_.names[name] = std::move(words);
    }
    return one->second;
  }

  void add(std::size_t place) {
    const VoiceForm form = read_voice(commands_[place].voice);
    if (form.is_device())
      add_device(place, form);
    else
      add_plain(place, form.plain);
  }

  void add_device(std::size_t place, const VoiceForm& form) {
    const std::string before = words_of(form.before);
    const std::string after = words_of(form.after);
    const std::string room = words_of(form.room);
    const std::string device = words_of(form.device);
    if (room.empty() || device.empty()) return grammar_.unreachable.push_back(place);
    rooms_[room].insert(device);
    if (!before.empty()) verbs_.insert(before);
    if (!after.empty()) verbs_.insert(after);
    add_full(place, sequence({before, room, device, after}));
    for (const std::string& b : form.before_optional ? Words{before, ""} : Words{before})
      for (const std::string& d : {device, std::string()})
        for (const std::string& a : form.after_optional ? Words{after, ""} : Words{after})
          add_short(place, sequence({b, room, d, a}));
  }

  void add_plain(std::size_t place, const std::vector<VoicePart>& parts) {
    std::vector<std::string> forms = {""};
    std::string full;
    for (const VoicePart& part : parts) {
      const std::string words = words_of(part.text);
      // Or "on" would be all that is said of a device whose names have no words.
      if (words.empty()) return grammar_.unreachable.push_back(place);
      full = sequence({full, words});
      std::vector<std::string> longer;
      for (const std::string& form : forms) {
        longer.push_back(sequence({form, words}));
        if (part.optional) longer.push_back(form);
      }
      constexpr std::size_t kMost = 64;
      if (longer.size() <= kMost) forms = std::move(longer);
    }
    if (full.empty()) return grammar_.unreachable.push_back(place);
    alternatives_.insert(full);
    add_full(place, full);
    for (const std::string& form : forms) add_short(place, form);
  }

  void add_full(std::size_t place, const std::string& words) {
    if (!grammar_.meaning.emplace(words, place).second) grammar_.unreachable.push_back(place);
  }

  void add_short(std::size_t place, const std::string& words) {
    if (words.empty()) return;
    const auto [one, is_new] = short_forms_.emplace(words, place);
    if (!is_new && one->second != place) one->second = kSeveral;
  }

  void write() {
    if (grammar_.meaning.empty()) return;
    grammar_.jsgf = "#JSGF V1.0;\ngrammar house;\n";
    if (rooms_.empty())
      grammar_.jsgf += "public <said> = " + choice(alternatives_) + ";\n";
    else
      write_house();
  }

  // What only nearly is a command stands beside it as likely as it is: any word before or behind a
  // device, a room or a device alone, a device in another room. Without these, each would be heard
  // as the command that it resembles. What hardly anybody says is rated so low that it is heard
  // only where nothing else comes near.
  void write_house() {
    std::string devices;
    std::set<std::string> rooms;
    std::set<std::string> names;
    for (const auto& [room, list] : rooms_) {
      devices += (devices.empty() ? "" : " | ") + room + " " + choice(list);
      rooms.insert(room);
      names.insert(list.begin(), list.end());
    }
    for (const char* word : {"on", "off"}) {
      grammar_.words.insert(word);
      verbs_.insert(word);
    }
    alternatives_.insert({"<verb> <device>", "<device> <verb>"});
    grammar_.jsgf += "<verb> = " + choice(verbs_) + ";\n" +             //
                     "<device> = ( " + devices + " );\n" +              //
                     "<name> = " + choice(names) + ";\n" +              //
                     "<near-room> = " + choice(rooms, kNear) + ";\n" +  //
                     "<near-name> = " + choice(names, kNear) + ";\n" +  //
                     "<odd-room> = " + choice(rooms, kOdd) + ";\n" +    //
                     "<odd-name> = " + choice(names, kOdd) + ";\n" +    //
                     "<near> = ( <near-room> | <near-name> | <near-room> <name> );\n" +
                     "<odd> = <odd-name> <odd-room>;\n" +
                     "public <said> = " + choice(alternatives_) +
                     " | [ <verb> ] <near> | <near> <verb> | <odd-name> <verb> <odd-room>"
                     " | [ <verb> ] <odd> | <odd> <verb>;\n";
  }

  const std::vector<VoiceCommand>& commands_;
  const SpokenAs& spoken_as_;
  HouseGrammar grammar_;
  std::map<std::string, std::string> known_;
  std::map<std::string, std::size_t> short_forms_;
  std::map<std::string, std::set<std::string>> rooms_;
  std::set<std::string> verbs_;
  std::set<std::string> alternatives_;  // commands in words or rules
};

}  // namespace

HouseGrammar build_grammar(const std::vector<VoiceCommand>& commands, const SpokenAs& spoken_as) {
  return Builder(commands, spoken_as).build();
}

}  // namespace homewarden::speech
