#include "platform/speech/voice_form.h"

#include <cstddef>

#include "base/text.h"

namespace homewarden::speech {
namespace {

bool is_one_word(std::string_view text) {
  return !text.empty() && text.find(' ') == std::string_view::npos;
}

std::string first_word(std::string_view text) {
  return std::string(text.substr(0, text.find(' ')));
}

std::string behind_first_word(std::string_view text) {
  const std::size_t blank = text.find(' ');
  return blank == std::string_view::npos ? "" : std::string(trim_blanks(text.substr(blank)));
}

}  // namespace

std::vector<VoicePart> parts_of_voice(std::string_view voice) {
  std::vector<VoicePart> parts;
  std::string text;
  int depth = 0;
  const auto close = [&](bool optional) {
    const std::string_view trimmed = trim_blanks(text);
    if (optional || !trimmed.empty()) parts.push_back({std::string(trimmed), optional});
    text.clear();
  };
  for (const char c : voice) {
    if (c == '[') {
      if (depth++ == 0) close(false);
    } else if (c == ']') {
      if (depth > 0 && --depth == 0) close(true);
    } else {
      text += c;
    }
  }
  if (depth > 0 || !trim_blanks(text).empty()) close(depth > 0);
  return parts;
}

VoiceForm read_voice(std::string_view voice) {
  const std::vector<VoicePart> parts = parts_of_voice(voice);
  VoiceForm form;
  std::string shape;
  for (const VoicePart& part : parts) shape += part.optional ? 'o' : 'f';
  if (shape == "foo" && is_one_word(parts[2].text)) {
    form.room = parts[0].text;
    form.device = parts[1].text;
    form.after = parts[2].text;
    form.after_optional = true;
  } else if (shape == "fo" && !is_one_word(parts[0].text)) {
    form.before = first_word(parts[0].text);
    form.room = behind_first_word(parts[0].text);
    form.device = parts[1].text;
  } else if (shape == "ofo" && is_one_word(parts[0].text)) {
    form.before = parts[0].text;
    form.before_optional = true;
    form.room = parts[1].text;
    form.device = parts[2].text;
  } else {
    form.plain = parts;
    return form;
  }
  form.device_optional = true;
  return form;
}

}  // namespace homewarden::speech
