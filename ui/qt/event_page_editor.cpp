#include "ui/qt/event_page_editor.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/day_chips.h"
#include "ui/qt/page.h"
#include "ui/qt/segments.h"
#include "ui/qt/sentence_box.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kGap = 10;  // above the next field

enum Basis { kClock, kSunrise, kSunset };

Basis basis_of(const std::string& hour) {
  const QString text = qt::from_code_page(hour);
  if (text.compare("sRise", Qt::CaseInsensitive) == 0) return kSunrise;
  return text.compare("sSet", Qt::CaseInsensitive) == 0 ? kSunset : kClock;
}

// The hour and the minute box hold a time of day or, with a sun time as the hour, an offset. Which
// of them is meant is a choice of its own here, and going back finds the time of day again.
class TimeFields : public QWidget {
 public:
  TimeFields(EventPanel& panel, QWidget* parent) : QWidget(parent), panel_(panel) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(8);
    basis_ = new Segments(
        {{tr("Clock"), LineIcon::kClock},
         {tr("Sunrise"), LineIcon::kSunrise},
         {tr("Sunset"), LineIcon::kSunset}},
        tr("At"), [this](int choice) { choose(static_cast<Basis>(choice)); }, this);
    rows->addWidget(basis_);
    auto* fields = new BreakingRow(this);
    fields->let_first_grow();
    words_ = new QLabel(fields);
    fields->first()->addWidget(words_);
    fields->first()->addStretch(1);
    hour_ = make_short_combo(panel.lst_hour, tr("Hour"), fields);
    colon_ = new QLabel(QStringLiteral(":"), fields);
    unit_ = new QLabel(tr("hours"), fields);
    auto* minute = make_short_combo(panel.lst_min, tr("Minute"), fields);
    for (QWidget* field : std::initializer_list<QWidget*>{hour_, colon_, minute, unit_})
      fields->second()->addWidget(field);
    rows->addWidget(fields);
    follow(panel.lst_hour.text, this, [this](const std::string& hour) { show(hour); });
    follow(panel.lst_min.text, this, [this](const std::string& minute_text) {
      if (basis_of(panel_.lst_hour.text) == kClock) clock_minute_ = minute_text;
    });
  }

 private:
  void show(const std::string& hour) {
    const Basis basis = basis_of(hour);
    if (basis == kClock) clock_hour_ = hour;
    basis_->show_choice(basis);
    words_->setText(basis == kClock     ? tr("Time of day")
                    : basis == kSunrise ? tr("Sunrise plus or minus")
                                        : tr("Sunset plus or minus"));
    for (QWidget* field : std::initializer_list<QWidget*>{hour_, colon_})
      field->setVisible(basis == kClock);
    unit_->setVisible(basis != kClock);
  }

  void choose(Basis basis) {
    if (basis == basis_of(panel_.lst_hour.text)) return;
    const std::string minute = basis == kClock ? clock_minute_ : "00";
    panel_.lst_hour.text = basis == kClock     ? clock_hour_
                           : basis == kSunrise ? std::string("sRise")
                                               : std::string("sSet");
    panel_.lst_min.text = minute;
  }

  EventPanel& panel_;
  Segments* basis_;
  QLabel* words_;
  QComboBox* hour_;
  QLabel* colon_;
  QLabel* unit_;
  std::string clock_hour_;
  std::string clock_minute_;
};

QWidget* make_action_row(EventPanel& panel, QWidget* body) {
  auto* row = new BreakingRow(body);
  auto* turn = new QVBoxLayout;
  turn->setSpacing(4);
  turn->addWidget(make_caption(tr("Turn"), row));
  turn->addWidget(make_segments(panel.lst_action, tr("Action"), row));
  row->first()->addLayout(turn);
  row->first()->addSpacing(kGap);
  auto* dim = new QVBoxLayout;
  dim->setSpacing(4);
  auto* words = make_caption({}, row);
  words->setWordWrap(false);
  bind(panel.Label29, words);
  dim->addWidget(words);
  dim->addWidget(make_combo(panel.lst_dim, tr("Dim level"), row));
  row->second()->addLayout(dim, 1);
  return row;
}

void add_buttons(EventPanel& panel, ListEditorPage* page) {
  QWidget* side = page->editor_foot()->parentWidget();
  auto* first = new QHBoxLayout;
  first->setSpacing(8);
  first->addWidget(make_action(panel.cmd_runnow, LineIcon::kPlay, ButtonKind::kGhost, side), 1);
  first->addWidget(make_action(panel.cmd_deleteevent, LineIcon::kTrash, ButtonKind::kDanger, side),
                   1);
  page->editor_foot()->addLayout(first);
  auto* second = new QHBoxLayout;
  second->setSpacing(8);
  second->addWidget(make_button(panel.cmd_cancel, side), 1);
  QPushButton* save = make_button(panel.Command6, side);
  set_kind(save, ButtonKind::kPrimary);
  second->addWidget(save, 1);
  page->editor_foot()->addLayout(second);
}

}  // namespace

QComboBox* fill_event_editor(EventPanel& panel, ListEditorPage* page) {
  QWidget* body = page->editor_side();
  QVBoxLayout* rows = page->editor_rows();
  bind(panel.lab_eventtitle, page->editor_title());
  rows->addWidget(make_caption(tr("Device:"), body));
  QComboBox* device = make_combo(panel.lst_eventdevice, tr("Device"), body);
  rows->addWidget(device);
  rows->addSpacing(kGap);
  rows->addWidget(make_action_row(panel, body));
  rows->addSpacing(kGap);
  rows->addWidget(make_caption(tr("at"), body));
  rows->addWidget(new TimeFields(panel, body));
  rows->addSpacing(kGap / 2);
  auto* days = new BreakingRow(body);
  days->let_first_grow();
  QLabel* words = make_caption(tr("Days of the week"), days);
  words->setWordWrap(false);
  days->first()->addWidget(words);
  days->second()->addWidget(make_day_presets(panel.days, days));
  rows->addWidget(days);
  rows->addWidget(make_day_chips(panel.days, body));
  rows->addSpacing(kGap);
  rows->addWidget(make_caption(tr("Frequency"), body));
  rows->addWidget(make_segments(panel.lst_freq, tr("Frequency"), body), 0, Qt::AlignLeft);
  rows->addSpacing(kGap + 2);
  rows->addWidget(new SentenceBox(panel.lab_sentence, panel.lab_nextrun, body));
  rows->addStretch(1);
  add_buttons(panel, page);
  return device;
}

}  // namespace homewarden::view
