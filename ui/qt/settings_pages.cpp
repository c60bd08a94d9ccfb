// The panel of the speech reminders.

#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {

QWidget* make_speech_page() {
  auto* page = new Page(tr("Speech Recognition Reminers"));
  page->add_text(tr("Speak Fluently and Clearly and leave small breaks between your words"));
  const std::pair<const char*, const char*> reminders[] = {
      {"To turn a device ON", "Say   (room)  then  (device name)  then ON   e.g. Bedroom Light On"},
      {"To turn a device OFF",
       "Say   Cancel  (room)  then  (device name)    e.g. Cancel bedroom light"},
      {"To DIM a device", "Say   Dim  (room)  then  (device name)   e.g. Dim bedroom light"},
      {"To make a device brighter",
       "Say   Bright  (room)  then  (device name)    e.g. Bright bedroom light"}};
  for (const auto& [what, how] : reminders) {
    page->add_heading(tr(what));
    page->add_text(tr(how));
  }
  page->rows()->addSpacing(10);
  page->add_text(tr("Saying  'Repeat Command'   will repeat your last command"));
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
