#include "ui/qt/speech_sheet_view.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/box.h"
#include "ui/qt/free_place.h"
#include "ui/qt/level_bar.h"
#include "ui/qt/listen_keys.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/segments.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kMargin = 20;
constexpr int kLetters = 56;  // in a line

QLabel* make_small(Label& control, QWidget* parent) {
  auto* label = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, parent);
  label->setWordWrap(true);
  bind(control, label);
  return label;
}

QVBoxLayout* rows_in(QWidget* place) {
  auto* rows = new QVBoxLayout(place);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(6);
  return rows;
}

}  // namespace

SpeechSheetView::SpeechSheetView(FrmSpeechSheet& form, QWidget* window)
    : QDialog(window), form_(form), body_(new QWidget), rows_(new QVBoxLayout(body_)) {
  setWindowTitle(tr("Speech properties"));
  auto* scroll = new QScrollArea(this);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  rows_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  rows_->setSpacing(6);
  const std::pair<QString, QWidget*> parts[] = {{tr("Microphone"), make_microphone()},
                                                {tr("Caution"), make_strictness()},
                                                {tr("Key"), make_key()},
                                                {tr("Try it"), make_test()}};
  for (const auto& [heading, part] : parts) {
    add_heading(heading);
    rows_->addWidget(part);
  }
  rows_->addWidget(make_guessed());
  rows_->addStretch(1);
  scroll->setWidget(body_);
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setSpacing(0);
  outer->addWidget(scroll, 1);
  outer->addWidget(new Rule(this));
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(kMargin, 12, kMargin, 12);
  foot->addStretch();
  auto* close = new QPushButton(tr("Close"), this);
  connect(close, &QPushButton::clicked, this, [this] { reject(); });
  foot->addWidget(close);
  outer->addLayout(foot);
  connect(this, &QDialog::finished, this, [this] { form_.visible = false; });
  follow(form.visible, this, [this](bool visible) { setVisible(visible); });
  watch(form.raised, this, [this] {
    raise();
    activateWindow();
  });
}

void SpeechSheetView::add_heading(const QString& text) {
  if (rows_->count() > 0) rows_->addSpacing(14);
  rows_->addWidget(make_heading(text, body_));
}

QWidget* SpeechSheetView::make_microphone() {
  auto* place = new QWidget(body_);
  auto* rows = rows_in(place);
  auto* list = new QComboBox(place);
  list->setAccessibleName(tr("Microphone"));
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(12);
  ListBox& control = form_.lst_microphone;
  follow(control.items, list, [list](const std::vector<std::string>& items) {
    const QSignalBlocker quiet(list);
    list->clear();
    for (const std::string& item : items) list->addItem(qt::from_code_page(item));
  });
  follow(control.selected, list, [list](int selected) { list->setCurrentIndex(selected); });
  connect(list, &QComboBox::activated, list,
          [&control](int position) { control.selected = position; });
  rows->addWidget(list);
  auto* line = new QHBoxLayout;
  line->setSpacing(12);
  auto* words = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, place);
  words->setText(tr("Loudness while it listens"));
  line->addWidget(words);
  line->addWidget(new LevelBar(form_.level, place), 1);
  rows->addLayout(line);
  return place;
}

QWidget* SpeechSheetView::make_strictness() {
  auto* place = new QWidget(body_);
  auto* rows = rows_in(place);
  QList<Segment> choices;
  for (const std::string& item : form_.lst_strictness.items.get())
    choices << Segment{qt::from_code_page(item)};
  auto* segments = new Segments(
      choices, tr("Caution"), [this](int choice) { form_.lst_strictness.selected = choice; },
      place);
  follow(form_.lst_strictness.selected, segments,
         [segments](int selected) { segments->show_choice(selected); });
  rows->addWidget(segments);
  rows->addWidget(make_small(form_.lab_strictness, place));
  return place;
}

QWidget* SpeechSheetView::make_key() {
  auto* place = new QWidget(body_);
  auto* rows = rows_in(place);
  auto* words = new QLabel(tr("Scroll Lock, and one of your own:"), place);
  words->setWordWrap(true);
  rows->addWidget(words);
  auto* line = new QHBoxLayout;
  line->setSpacing(8);
  auto* edit = new QKeySequenceEdit(place);
  edit->setAccessibleName(tr("Key that begins listening"));
  line->addWidget(edit, 1);
  auto* none = new QPushButton(tr("None"), place);
  none->setAccessibleName(tr("No key of your own"));
  line->addWidget(none);
  rows->addLayout(line);
  rows->addWidget(make_small(form_.lab_key, place));
  // One combination: what follows it begins anew.
  connect(edit, &QKeySequenceEdit::keySequenceChanged, this, [edit](const QKeySequence& keys) {
    if (keys.count() > 1)
      edit->setKeySequence(QKeySequence(keys[static_cast<uint>(keys.count() - 1)]));
  });
  connect(edit, &QKeySequenceEdit::editingFinished, this, [this, edit] {
    const QKeySequence keys = edit->keySequence();
    if (keys.isEmpty() || can_begin_listening(keys[0])) {
      form_.key = qt::to_code_page(keys.toString(QKeySequence::PortableText));
      return;
    }
    edit->setKeySequence(
        QKeySequence(qt::from_code_page(form_.key.get()), QKeySequence::PortableText));
    form_.key_refused();
  });
  connect(none, &QPushButton::clicked, this, [this] { form_.key = std::string(); });
  follow(form_.key, edit, [edit](const std::string& key) {
    edit->setKeySequence(QKeySequence(qt::from_code_page(key), QKeySequence::PortableText));
  });
  return place;
}

QWidget* SpeechSheetView::make_test() {
  auto* place = new QWidget(body_);
  auto* rows = rows_in(place);
  auto* line = new QHBoxLayout;
  line->setSpacing(12);
  line->addWidget(make_action(form_.cmd_test, LineIcon::kMicrophone, ButtonKind::kPlain, place));
  auto* words = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, place);
  words->setText(tr("Listens once, and switches nothing"));
  words->setWordWrap(true);
  line->addWidget(words, 1);
  rows->addLayout(line);
  auto* tested = new QLabel(place);
  tested->setWordWrap(true);
  tested->setTextFormat(Qt::PlainText);
  bind(form_.lab_tested, tested);
  follow(form_.lab_tested.caption, tested,
         [tested](const std::string& text) { tested->setVisible(!text.empty()); });
  rows->addWidget(tested);
  return place;
}

QWidget* SpeechSheetView::make_guessed() {
  names_ = new QWidget(body_);
  auto* rows = rows_in(names_);
  rows->addSpacing(14);
  rows->addWidget(make_heading(tr("Spoken as"), names_));
  auto* words = make_quiet_label(names_);
  words->setText(
      tr("How these names sound is a guess. If one is not understood, write it as an English "
         "reader would say it: Zoe as \"zo ee\"."));
  rows->addWidget(words);
  auto* list = new QWidget(names_);
  name_rows_ = rows_in(list);
  rows->addWidget(list);
  watch(form_.guessed.changed, this, [this] { show_guessed(); });
  show_guessed();
  return names_;
}

// A field that has the keyboard stays; what is written in it is passed on when it is left.
void SpeechSheetView::show_guessed() {
  const auto& names = form_.guessed.get();
  names_->setVisible(!names.empty());
  QWidget* list = name_rows_->parentWidget();
  const auto edits = list->findChildren<QLineEdit*>();
  const bool are_the_same = edits.size() == static_cast<qsizetype>(names.size()) &&
                            std::equal(names.begin(), names.end(), edits.begin(),
                                       [](const GuessedFace& one, const QLineEdit* edit) {
                                         return edit->objectName() == qt::from_code_page(one.name);
                                       });
  if (are_the_same) return;
  while (QLayoutItem* item = name_rows_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  for (const GuessedFace& one : names) {
    const QString name = qt::from_code_page(one.name);
    auto* label = new QLabel(name, list);
    label->setTextFormat(Qt::PlainText);
    label->setToolTip(tr("Guessed: %1").arg(qt::from_code_page(one.words)).toHtmlEscaped());
    name_rows_->addWidget(label);
    auto* edit = new QLineEdit(qt::from_code_page(one.spoken_as), list);
    edit->setObjectName(name);
    edit->setAccessibleName(tr("%1, spoken as").arg(name));
    edit->setPlaceholderText(tr("guessed"));
    edit->setMaxLength(100);
    connect(edit, &QLineEdit::editingFinished, this,
            [this, edit, key = one.name] { form_.respelled(key, qt::to_code_page(edit->text())); });
    name_rows_->addWidget(edit);
  }
}

// As wide as is pleasant to read, as high as it is, no larger than the screen.
void SpeechSheetView::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  const QSize screen = screen_around(pos()).size() * 9 / 10;
  const int wanted = fontMetrics().averageCharWidth() * kLetters + 2 * kMargin;
  const int most = std::min(wanted, screen.width());
  body_->layout()->activate();
  const int height = body_->layout()->hasHeightForWidth() ? body_->layout()->heightForWidth(most)
                                                          : body_->sizeHint().height();
  resize(most, std::min(height + 72, screen.height()));
}

}  // namespace homewarden::view
