#include "platform/speech/wav_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/speech/resampler.h"

namespace homewarden::speech {
namespace {

constexpr std::size_t kLongest = 3600;  // seconds

// Numbers in the file have their lowest byte first.
unsigned number_at(std::string_view bytes, std::size_t at, std::size_t length) {
  unsigned number = 0;
  for (std::size_t i = length; i-- > 0;)
    number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

struct Chunks {
  std::string_view format;
  std::string_view data;
};

Chunks chunks_of(std::string_view file) {
  Chunks chunks;
  if (file.substr(0, 4) != "RIFF" || file.size() < 12 || file.substr(8, 4) != "WAVE") return chunks;
  for (std::size_t at = 12; at + 8 <= file.size();) {
    const std::string_view name = file.substr(at, 4);
    const std::size_t length = number_at(file, at + 4, 4);
    const std::string_view content = file.substr(at + 8, length);  // or what there is of it
    if (name == "fmt ") chunks.format = content;
    if (name == "data") chunks.data = content;
    at += 8 + length + length % 2;
  }
  return chunks;
}

}  // namespace

std::optional<Sound> read_wave(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
  const Chunks chunks = chunks_of(bytes);
  if (chunks.format.size() < 16) return std::nullopt;
  constexpr unsigned kPcm = 1;
  const std::size_t channels = number_at(chunks.format, 2, 2);
  const unsigned rate = number_at(chunks.format, 4, 4);
  if (number_at(chunks.format, 0, 2) != kPcm || number_at(chunks.format, 14, 2) != 16 ||
      channels == 0 || rate < 1000 || rate > 192000)
    return std::nullopt;
  const std::size_t frame = 2 * channels;
  const std::size_t count = std::min(chunks.data.size() / frame, kLongest * rate);
  Sound sound(count);
  for (std::size_t i = 0; i < count; ++i)
    sound[i] = static_cast<std::int16_t>(number_at(chunks.data, i * frame, 2));
  if (rate == kSampleRate) return sound;
  std::vector<float> samples;
  samples.reserve(count);
  for (const std::int16_t sample : sound) samples.push_back(static_cast<float>(sample) / 32768.0F);
  return Resampler(static_cast<int>(rate)).take(samples);
}

}  // namespace homewarden::speech
