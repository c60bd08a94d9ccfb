#include "ui/qt/home_boxes.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/link_button.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr double kSmall = 0.86;
constexpr double kTimes = 1.14;
constexpr const char* kEventRows = "event_rows";

// A sign beside words.
class Sign : public QWidget {
 public:
  Sign(LineIcon icon, QWidget* parent) : QWidget(parent), icon_(icon) { setFixedSize(20, 20); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    draw_icon(painter, icon_, rect(), look_of(palette()).link);
  }

 private:
  LineIcon icon_;
};

QWidget* make_event_row(const ComingEvent& event, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* columns = new QHBoxLayout(row);
  columns->setContentsMargins(0, 4, 0, 4);
  columns->setSpacing(12);
  auto* time = new ScaledLabel(kTimes, true, ScaledLabel::Tone::kText, row);
  time->setText(qt::from_code_page(event.time));
  time->setMinimumWidth(QFontMetrics(scaled_font(kTimes, true)).horizontalAdvance("00:00"));
  columns->addWidget(time);
  auto* dot = new Dot(row);
  dot->set_tone(event.on ? Dot::Tone::kOn : Dot::Tone::kOff);
  columns->addWidget(dot);
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  auto* what = new ScaledLabel(1, false, ScaledLabel::Tone::kText, row);
  what->setWordWrap(true);
  what->setText(qt::from_code_page(event.what));
  words->addWidget(what);
  auto* when = new ScaledLabel(kSmall, false, ScaledLabel::Tone::kQuiet, row);
  when->setWordWrap(true);
  when->setText(qt::from_code_page(event.when));
  words->addWidget(when);
  columns->addLayout(words, 1);
  return row;
}

}  // namespace

QWidget* make_coming_box(HomePanel& home, QWidget* parent) {
  auto* box = new Box(parent, 0);
  box->setAccessibleName(tr("Next events"));
  box->rows()->setSpacing(4);
  auto* list = new QWidget(box);
  auto* rows = new QVBoxLayout(list);
  rows->setContentsMargins(16, 8, 16, 4);
  rows->setSpacing(0);
  auto* none = make_quiet_label(list);
  bind(home.lab_nocoming, none);
  rows->addWidget(none);
  follow(home.coming, box, [rows, list](const std::vector<ComingEvent>& events) {
    delete list->findChild<QWidget*>(kEventRows);
    auto* shown = new QWidget(list);
    shown->setObjectName(kEventRows);
    auto* inner = new QVBoxLayout(shown);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->setSpacing(0);
    for (const ComingEvent& event : events) inner->addWidget(make_event_row(event, shown));
    rows->addWidget(shown);
  });
  box->rows()->addWidget(list);
  box->rows()->addWidget(new Rule(box));
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(14, 0, 14, 4);
  foot->addWidget(new LinkButton(home.Label5, 1, std::nullopt, box));
  foot->addStretch();
  box->rows()->addLayout(foot);
  return box;
}

void follow_condition(InterfacePanel& panel, Dot* dot) {
  follow(panel.condition, dot, [dot](InterfaceCondition condition) {
    switch (condition) {
      case InterfaceCondition::kConnected:
        return dot->set_tone(Dot::Tone::kOk);
      case InterfaceCondition::kLooking:
      case InterfaceCondition::kMissing:
        return dot->set_tone(Dot::Tone::kUnderWay);
      case InterfaceCondition::kTrouble:
      case InterfaceCondition::kUnplugged:
      case InterfaceCondition::kRefused:
        return dot->set_tone(Dot::Tone::kFailed);
    }
  });
}

QWidget* make_command_field(InterfacePanel& panel, QWidget* parent) {
  auto* place = new QWidget(parent);
  auto* columns = new QHBoxLayout(place);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(4);
  auto* field = new QLineEdit(place);
  field->setReadOnly(true);
  field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  field->setAccessibleName(tr("Command to type into a terminal"));
  columns->addWidget(field, 1);
  auto* copy = new QToolButton(place);
  copy->setIcon(make_icon(LineIcon::kCopy));
  copy->setAutoRaise(true);
  copy->setMinimumSize(36, 36);
  copy->setToolTip(tr("Copy"));
  copy->setAccessibleName(tr("Copy the command"));
  QObject::connect(copy, &QToolButton::clicked, field,
                   [field] { QApplication::clipboard()->setText(field->text()); });
  columns->addWidget(copy);
  follow(panel.lab_command.caption, place, [place, field](const std::string& text) {
    field->setText(qt::from_code_page(text));
    field->setCursorPosition(0);
    place->setVisible(!text.empty());
  });
  return place;
}

QWidget* make_interface_box(InterfacePanel& panel, HomePanel& home, QWidget* parent) {
  auto* box = new Box(parent, 16);
  auto* state = new QHBoxLayout;
  state->setSpacing(12);
  auto* dot = new Dot(box);
  follow_condition(panel, dot);
  state->addWidget(dot);
  auto* words = new ScaledLabel(1, true, ScaledLabel::Tone::kText, box);
  words->setWordWrap(true);
  bind(panel.lab_interface, words);
  state->addWidget(words, 1);
  box->rows()->addLayout(state);
  auto* help = new ScaledLabel(1, false, ScaledLabel::Tone::kQuiet, box);
  help->setWordWrap(true);
  bind(panel.lab_interfacehelp, help);
  follow(panel.lab_interfacehelp.caption, help,
         [help](const std::string& text) { help->setVisible(!text.empty()); });
  box->rows()->addWidget(help);
  box->rows()->addWidget(make_command_field(panel, box));
  QPushButton* look = make_button(panel.cmd_look, box);
  box->rows()->addWidget(look);
  auto* links = new QVBoxLayout;
  links->setSpacing(0);
  for (Label* link : {&home.Label51, &home.Label63})
    links->addWidget(new LinkButton(*link, 0.93, std::nullopt, box));
  box->rows()->addLayout(links);
  return box;
}

QWidget* make_notice_box(Label& notice, QWidget* parent) {
  auto* box = new Box(parent, 16);
  auto* columns = new QHBoxLayout;
  columns->setSpacing(12);
  columns->addWidget(new Sign(LineIcon::kInfo, box), 0, Qt::AlignTop);
  auto* words = new ScaledLabel(1, false, ScaledLabel::Tone::kText, box);
  words->setWordWrap(true);
  words->setTextInteractionFlags(Qt::TextSelectableByMouse);
  follow(notice.caption, words,
         [words](const std::string& text) { words->setText(qt::from_code_page(text)); });
  columns->addWidget(words, 1);
  box->rows()->addLayout(columns);
  follow(notice.visible, box, [box](bool visible) { box->setVisible(visible); });
  return box;
}

}  // namespace homewarden::view
