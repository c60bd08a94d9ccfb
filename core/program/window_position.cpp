#include "core/program/window_position.h"

#include "base/text.h"

namespace homewarden {
namespace {

// The frame that the desktop draws around a window takes its room above and below.
constexpr float kFrameHeight = 600.0F;

float stored(Settings& settings, const char* key, float otherwise) {
  return static_cast<float>(leading_number(settings.read("data", key, text_of_single(otherwise))));
}

float stored_length(Settings& settings, const char* key, float otherwise) {
  const float length = stored(settings, key, otherwise);
  return length > 0 ? length : otherwise;
}

void keep_length(Property<float>& length, Property<float>& begin, float most) {
  if (length <= most) return;
  length = most;
  begin = 0.0F;
}

}  // namespace

void keep_on_screen(Window& window, const Desktop& desktop) {
  if (window.left > desktop.screen_width()) window.left = 100.0F;
  if (window.top > desktop.screen_height()) window.top = 100.0F;
  keep_length(window.width, window.left, desktop.screen_width());
  keep_length(window.height, window.top, desktop.screen_height() - kFrameHeight);
}

void place_window(Window& window, Settings& settings, const Desktop& desktop) {
  window.left = stored(settings, "left", 100.0F);
  window.top = stored(settings, "top", 100.0F);
  window.width = stored_length(settings, "width", window.width);
  window.height = stored_length(settings, "height", window.height);
  keep_on_screen(window, desktop);
}

void save_place(const Window& window, Settings& settings) {
  settings.write("data", "left", text_of_single(window.left));
  settings.write("data", "top", text_of_single(window.top));
  settings.write("data", "width", text_of_single(window.width));
  settings.write("data", "height", text_of_single(window.height));
}

}  // namespace homewarden
