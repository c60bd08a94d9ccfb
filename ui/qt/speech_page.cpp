// The panel of the speech reminders: what was heard last, and how to speak.

#include <QHBoxLayout>
#include <QPushButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/box.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

QLabel* make_words(const QString& text, double factor, bool bold, ScaledLabel::Tone tone,
                   QWidget* parent) {
  auto* label = new ScaledLabel(factor, bold, tone, parent);
  label->setWordWrap(true);
  label->setText(text);
  return label;
}

// What was heard last, with the button that listens.
QWidget* make_heard(SpeechPanel& panel, QWidget* parent) {
  auto* box = new Box(parent, 16);
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  auto* state = make_heading({}, box);
  bind(panel.lab_voicestate, state);
  words->addWidget(state);
  auto* heard = make_quiet_label(box);
  heard->setTextFormat(Qt::PlainText);
  const auto show_heard = [heard, &panel] {
    const std::string& text = panel.lab_heard.caption;
    heard->setText(panel.listening ? tr("Say a command; Escape gives up")
                   : text.empty()  ? tr("Press Listen or Scroll Lock, then say a command")
                                   : qt::from_code_page(text));
  };
  watch(panel.lab_heard.caption.changed, heard, show_heard);
  follow(panel.listening, heard, [show_heard](bool) { show_heard(); });
  words->addWidget(heard);
  box->rows()->addLayout(words);
  auto* buttons = new BreakingRow(box);
  buttons->first()->addWidget(
      make_action(panel.cmd_listen, LineIcon::kMicrophone, ButtonKind::kPrimary, buttons));
  buttons->first()->addWidget(make_button(panel.cmd_commands, buttons));
  buttons->second()->addWidget(make_button(panel.cmd_speechproperties, buttons));
  buttons->second()->addStretch();
  box->rows()->addSpacing(4);
  box->rows()->addWidget(buttons);
  follow(panel.cmd_listen.visible, box, [box](bool visible) { box->setVisible(visible); });
  return box;
}

// Why there is no voice.
QWidget* make_trouble(SpeechPanel& panel, QWidget* parent) {
  auto* box = new Box(parent, 16);
  box->rows()->addWidget(make_heading(tr("There is no voice"), box));
  auto* why = make_quiet_label(box);
  bind(panel.lab_trouble, why);
  why->setTextFormat(Qt::PlainText);
  box->rows()->addWidget(why);
  follow(panel.lab_trouble.caption, box,
         [box](const std::string& text) { box->setVisible(!text.empty()); });
  return box;
}

}  // namespace

QWidget* make_speech_page(SpeechPanel& panel) {
  auto* page = new Page(tr("Speech Recognition Reminers"));
  page->subtitle()->setText(
      tr("Speak Fluently and Clearly and leave small breaks between your words"));
  page->show_subtitle();
  page->rows()->addWidget(make_heard(panel, page->body()));
  page->rows()->addWidget(make_trouble(panel, page->body()));
  const std::pair<const char*, const char*> reminders[] = {
      {"To turn a device ON", "Say   (room)  then  (device name)  then ON   e.g. Bedroom Light On"},
      {"To turn a device OFF",
       "Say   Cancel  (room)  then  (device name)    e.g. Cancel bedroom light"},
      {"To DIM a device", "Say   Dim  (room)  then  (device name)   e.g. Dim bedroom light"},
      {"To make a device brighter",
       "Say   Bright  (room)  then  (device name)    e.g. Bright bedroom light"}};
  auto* box = new Box(page->body());
  for (const auto& [what, how] : reminders) {
    if (box->rows()->count() > 0) box->rows()->addSpacing(8);
    box->rows()->addWidget(make_words(tr(what), 1, true, ScaledLabel::Tone::kText, box));
    box->rows()->addWidget(make_words(tr(how), 1, false, ScaledLabel::Tone::kQuiet, box));
  }
  box->rows()->addSpacing(8);
  box->rows()->addWidget(new Rule(box));
  box->rows()->addWidget(make_words(tr("Saying  'Repeat Command'   will repeat your last command"),
                                    1, false, ScaledLabel::Tone::kText, box));
  page->rows()->addWidget(box);
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
