// The settings page: where the house is, how the program starts, the interface, the voice, the
// files.

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/box.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/halves.h"
#include "ui/qt/home_boxes.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/sun_arc.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kBeside = 96;  // letters

// A box with a line that says what it does, both hidden while the control is.
QWidget* make_option(CheckBox& control, const QString& hint, QWidget* parent) {
  auto* option = new QWidget(parent);
  auto* rows = new QVBoxLayout(option);
  rows->setContentsMargins(0, 0, 0, 8);
  rows->setSpacing(0);
  auto* box = new QCheckBox(option);
  bind(control, box);
  rows->addWidget(box);
  auto* words = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, option);
  words->setWordWrap(true);
  words->setText(hint);
  words->setContentsMargins(32, 0, 0, 0);
  rows->addWidget(words);
  follow(control.visible, option, [option](bool visible) { option->setVisible(visible); });
  return option;
}

QWidget* make_location(OptionsPanel& options, QWidget* parent) {
  auto* box = new Box(parent);
  box->rows()->addWidget(make_heading(tr("Location"), box));
  box->rows()->addWidget(new SunArc(options, box));
  auto* times = new QLabel(box);
  times->setWordWrap(true);
  bind(options.lab_sunset, times);
  follow(options.lab_sunset.caption, times, [times, &options](const std::string& text) {
    times->setVisible(options.lab_sunset.visible && !text.empty());
  });
  box->rows()->addWidget(times);
  auto* city = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, box);
  city->setText(tr("City"));
  box->rows()->addSpacing(4);
  box->rows()->addWidget(city);
  box->rows()->addWidget(make_combo(options.com_city, tr("City"), box));
  box->rows()->addSpacing(4);
  box->rows()->addWidget(make_option(options.Check1, tr("One hour later, in summer"), box));
  return box;
}

QWidget* make_start(OptionsPanel& options, QWidget* parent) {
  auto* box = new Box(parent);
  box->rows()->addWidget(make_heading(tr("Start-up"), box));
  box->rows()->addWidget(make_option(options.chk_lww, tr("Opens when you log on"), box));
  box->rows()->addWidget(make_option(
      options.chk_service, tr("Events and web pages go on while this window is closed"), box));
  box->rows()->addWidget(
      make_option(options.chk_startup, tr("Waits 20 seconds first, skipped with one press"), box));
  return box;
}

QWidget* make_voice(SpeechPanel& speech, QWidget* parent) {
  auto* box = new Box(parent, 16);
  box->rows()->addWidget(make_heading(tr("Voice"), box));
  auto* state = make_quiet_label(box);
  bind(speech.lab_voicestate, state);
  box->rows()->addWidget(state);
  auto* buttons = new BreakingRow(box);
  buttons->first()->addWidget(
      make_action(speech.cmd_listen, LineIcon::kMicrophone, ButtonKind::kPlain, buttons));
  buttons->first()->addWidget(make_button(speech.cmd_speechproperties, buttons));
  buttons->second()->addWidget(make_button(speech.cmd_speechpage, buttons));
  buttons->second()->addStretch();
  box->rows()->addWidget(buttons);
  return box;
}

QWidget* make_files(OptionsPanel& options, QWidget* parent) {
  auto* box = new Box(parent, 16);
  auto* columns = new QHBoxLayout;
  columns->setSpacing(12);
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->addWidget(make_heading(tr("Data files"), box));
  auto* state = make_quiet_label(box);
  bind(options.lab_files, state);
  words->addWidget(state);
  columns->addLayout(words, 1);
  columns->addWidget(make_button(options.cmd_folder, box), 0, Qt::AlignVCenter);
  box->rows()->addLayout(columns);
  return box;
}

}  // namespace

QWidget* make_options_page(OptionsPanel& options, InterfacePanel& interface, HomePanel& home,
                           SpeechPanel& speech) {
  auto* page = new Page(tr("Settings"), 0);
  page->subtitle()->setText(tr("Colours and text size follow your desktop"));
  page->show_subtitle();
  page->rows()->setSpacing(20);
  auto* halves = new Halves(kBeside, 0, page->body());
  bind_common(options.Frame1, halves, tr("Location and start-up settings"));
  halves->left()->addWidget(make_location(options, halves->left_half()));
  halves->left()->addStretch();
  halves->right()->addWidget(make_start(options, halves->right_half()));
  halves->right()->addWidget(make_interface_box(interface, home, halves->right_half()));
  halves->right()->addWidget(make_voice(speech, halves->right_half()));
  halves->right()->addWidget(make_files(options, halves->right_half()));
  halves->right()->addStretch();
  page->rows()->addWidget(halves);
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
