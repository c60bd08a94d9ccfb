#include "ui/qt/first_run_page.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/box.h"
#include "ui/qt/flow_grid.h"
#include "ui/qt/home_boxes.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/link_button.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kStepWidth = 36;  // in letters

// The number of a step; a tick when it is done.
class StepNumber : public QWidget {
 public:
  StepNumber(int number, QWidget* parent) : QWidget(parent), number_(number) {
    setFixedSize(28, 28);
  }
  void set_done(bool done) {
    done_ = done;
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    draw_box(painter, rect(), 14, Qt::transparent, done_ ? look.ok : look.focus, 1.5);
    if (done_) return draw_icon(painter, LineIcon::kCheck, centred(rect(), 18), look.ok);
    painter.setFont(scaled_font(1, true));
    painter.setPen(look.link);
    painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
  }

 private:
  int number_;
  bool done_ = false;
};

struct Step {
  Box* box;
  StepNumber* number;
};

Step make_step(int number, const QString& title, QWidget* parent) {
  auto* box = new Box(parent);
  box->rows()->setSpacing(12);
  auto* head = new QHBoxLayout;
  head->setSpacing(12);
  auto* sign = new StepNumber(number, box);
  head->addWidget(sign, 0, Qt::AlignTop);
  QLabel* words = make_heading(title, box);
  words->setWordWrap(true);
  head->addWidget(words, 1);
  box->rows()->addLayout(head);
  return {box, sign};
}

bool is_name(const TextBox& box) {
  return !qt::from_code_page(box.text.get()).trimmed().isEmpty();
}

bool is_right(const Label& wrong) {
  return wrong.caption.get().empty();
}

// In red below its field, while there is something to say.
void add_wrong(Label& wrong, Box* box) {
  auto* words = new ScaledLabel(0.86, false, ScaledLabel::Tone::kFailed, box);
  words->setWordWrap(true);
  bind(wrong, words);
  follow(wrong.caption, words,
         [words](const std::string& text) { words->setVisible(!text.empty()); });
  box->rows()->addWidget(words);
}

// How far the search through the serial ports is, while there is one.
class SearchProgress : public QWidget {
 public:
  SearchProgress(InterfacePanel& panel, QWidget* parent) : QWidget(parent) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(6);
    auto* bar = new QProgressBar(this);
    bar->setTextVisible(false);
    rows->addWidget(bar);
    auto* words = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, this);
    words->setWordWrap(true);
    rows->addWidget(words);
    follow(panel.search, this, [this, bar, words](const InterfacePanel::Search& search) {
      setVisible(search.port > 0);
      bar->setRange(0, std::max(1, search.ports));
      bar->setValue(search.port);
      words->setText(tr("Looking on serial port %1 of %2").arg(search.port).arg(search.ports));
      bar->setAccessibleName(words->text());
    });
  }
};

class FirstRunPage : public Page {
 public:
  FirstRunPage(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home,
               AddRoomPanel& add_room, AddDevicePanel& add_device)
      : Page(tr("Welcome to Homewarden"), 0), panel_(panel), interface_(interface) {
    show_subtitle();
    bind(panel.lab_firststeps, subtitle());
    rows()->setSpacing(20);
    rows()->addWidget(make_notice_box(home.lab_notice, body()));
    rows()->addWidget(new FirstRunPicture(body()));
    auto* steps = new FlowGrid(kStepWidth, FlowGrid::Fill::kStretch, 16, body());
    steps->set_cells({make_connect(interface, home, steps), make_room(add_room, steps),
                      make_lamp(add_device, steps)});
    rows()->addWidget(steps);
    add_demo();
    add_rest();
    follow(panel.step, this, [this](FirstStep) { show_step(); });
    watch(interface.condition.changed, this, [this] { show_lamp_done(); });
    watch(panel_.lamp_switched.changed, this, [this] { show_lamp_done(); });
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape)
      panel_.first_run_left();
    else
      Page::keyPressEvent(event);
  }
  void showEvent(QShowEvent* event) override {
    Page::showEvent(event);
    focus_next();
  }

 private:
  QWidget* make_connect(InterfacePanel& interface, HomePanel& home, QWidget* parent) {
    const Step step = make_step(1, tr("Connect the interface"), parent);
    QVBoxLayout* rows = step.box->rows();
    auto* state = new QHBoxLayout;
    auto* dot = new Dot(step.box);
    follow_condition(interface, dot);
    state->setSpacing(12);
    state->addWidget(dot);
    auto* words = new ScaledLabel(1, true, ScaledLabel::Tone::kText, step.box);
    words->setWordWrap(true);
    bind(interface.lab_interface, words);
    state->addWidget(words, 1);
    rows->addLayout(state);
    auto* help = new QLabel(step.box);
    help->setWordWrap(true);
    help->setTextFormat(Qt::PlainText);
    rows->addWidget(help);
    rows->addWidget(new SearchProgress(interface, step.box));
    rows->addWidget(make_command_field(interface, step.box));
    auto* failed = new ScaledLabel(0.86, false, ScaledLabel::Tone::kFailed, step.box);
    failed->setWordWrap(true);
    bind(interface.lab_notfound, failed);
    rows->addWidget(failed);
    rows->addStretch();
    auto* links = new QVBoxLayout;
    links->setSpacing(0);
    rows->addLayout(links);
    for (Label* link : {&home.Label51, &home.Label63})
      links->addWidget(new LinkButton(*link, 0.93, std::nullopt, step.box));
    const auto show = [&interface, help, number = step.number] {
      const auto condition = interface.condition.get();
      number->set_done(condition == InterfaceCondition::kConnected);
      if (condition == InterfaceCondition::kConnected)
        help->setText(tr("It is ready."));
      else if (condition == InterfaceCondition::kRefused)
        help->setText(tr("Run this command once, then log off and on:"));
      else
        help->setText(tr("Plug it into the mains and into this computer. It is found by itself."));
      if (condition == InterfaceCondition::kRefused && interface.lab_command.caption.get().empty())
        help->setText(qt::from_code_page(interface.lab_interfacehelp.caption.get()));
    };
    show();
    watch(interface.condition.changed, help, show);
    watch(interface.lab_command.caption.changed, help, show);
    return step.box;
  }

  QWidget* make_room(AddRoomPanel& panel, QWidget* parent) {
    const Step step = make_step(2, tr("Name a room"), parent);
    QVBoxLayout* rows = step.box->rows();
    room_number_ = step.number;
    room_hint_ = new QLabel(tr("Type in your room name below, then click on Save"), step.box);
    room_hint_->setWordWrap(true);
    rows->addWidget(room_hint_);
    room_ = new QLineEdit(step.box);
    bind(panel.txt_roomname, room_, tr("Room name"));
    room_->setPlaceholderText(tr("Living Room"));
    rows->addWidget(room_);
    add_wrong(panel_.lab_roomwrong, step.box);
    room_done_ = new ScaledLabel(1.14, true, ScaledLabel::Tone::kText, step.box);
    bind(panel_.lab_firstroom, room_done_);
    rows->addWidget(room_done_);
    rows->addStretch();
    room_save_ = make_button(panel.Command3, step.box);
    set_kind(room_save_, ButtonKind::kPrimary);
    rows->addWidget(room_save_);
    // Without a name there is nothing to save, and nothing to complain about.
    const auto show_save = [this, &panel] {
      room_save_->setEnabled(is_name(panel.txt_roomname) && is_right(panel_.lab_roomwrong));
    };
    show_save();
    watch(panel.txt_roomname.text.changed, this, show_save);
    watch(panel_.lab_roomwrong.caption.changed, this, show_save);
    connect(room_, &QLineEdit::returnPressed, room_save_, &QPushButton::click);
    return step.box;
  }

  QWidget* make_lamp(AddDevicePanel& panel, QWidget* parent) {
    const Step step = make_step(3, tr("Add a lamp and try it"), parent);
    QVBoxLayout* rows = step.box->rows();
    lamp_number_ = step.number;
    auto* hint = new QLabel(step.box);
    bind(panel_.lab_lamphint, hint);
    hint->setWordWrap(true);
    rows->addWidget(hint);
    fields_ = new QWidget(step.box);
    auto* fields = new QVBoxLayout(fields_);
    fields->setContentsMargins(0, 0, 0, 0);
    fields->setSpacing(8);
    lamp_ = new QLineEdit(fields_);
    bind(panel.txt_devname, lamp_, tr("Device name"));
    lamp_->setPlaceholderText(tr("Table Lamp"));
    fields->addWidget(lamp_);
    auto* address = new QHBoxLayout;
    address->setSpacing(8);
    address->addWidget(new QLabel(tr("Address"), fields_));
    address->addWidget(make_short_combo(panel.lst_housecode, tr("House code"), fields_), 1);
    address->addWidget(make_short_combo(panel.lst_device, tr("Device number"), fields_), 1);
    fields->addLayout(address);
    rows->addWidget(fields_);
    add_wrong(panel_.lab_lampwrong, step.box);
    auto* words = new ScaledLabel(1.14, true, ScaledLabel::Tone::kText, step.box);
    words->setWordWrap(true);
    bind(panel_.lab_firstlamp, words);
    rows->addWidget(words);
    rows->addStretch();
    try_ = make_action(panel_.cmd_try, LineIcon::kPower, ButtonKind::kPlain, step.box);
    rows->addWidget(try_);
    open_ = make_button(panel_.cmd_open, step.box);
    set_kind(open_, ButtonKind::kPrimary);
    rows->addWidget(open_);
    const auto show = [this, &panel] {
      lamp_named_ = is_name(panel.txt_devname) && is_right(panel_.lab_lampwrong);
      show_try();
    };
    show();
    watch(panel.txt_devname.text.changed, this, show);
    watch(panel_.lab_lampwrong.caption.changed, this, show);
    connect(lamp_, &QLineEdit::returnPressed, try_, &QPushButton::click);
    return step.box;
  }

  void add_demo() {
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(make_action(panel_.cmd_demo, LineIcon::kHome, ButtonKind::kPlain, body()));
    QLabel* words = make_quiet_label(body());
    words->setText(tr("It needs no interface and changes nothing of yours."));
    row->addWidget(words, 1);
    rows()->addLayout(row);
  }

  void show_step() {
    const FirstStep step = panel_.step;
    room_hint_->setVisible(step == FirstStep::kRoom);
    room_->setVisible(step == FirstStep::kRoom);
    room_save_->setVisible(step == FirstStep::kRoom);
    room_done_->setVisible(step != FirstStep::kRoom);
    room_number_->set_done(step != FirstStep::kRoom);
    show_lamp_done();
    fields_->setEnabled(step == FirstStep::kLamp);
    fields_->setVisible(step != FirstStep::kTry);
    try_->turn_into(step == FirstStep::kLamp ? ButtonKind::kPrimary : ButtonKind::kPlain);
    show_try();
    focus_next();
  }

  // A lamp that could not be tried is no lamp that switches.
  void show_lamp_done() {
    lamp_number_->set_done(panel_.step == FirstStep::kTry && panel_.lamp_switched &&
                           interface_.condition == InterfaceCondition::kConnected);
  }

  void show_try() {
    const FirstStep step = panel_.step;
    try_->setEnabled(step == FirstStep::kTry || (step == FirstStep::kLamp && lamp_named_));
  }

  // Where the next thing is typed, also when a small window has to scroll there.
  void focus_next() {
    const FirstStep step = panel_.step;
    QWidget* next = step == FirstStep::kRoom   ? static_cast<QWidget*>(room_)
                    : step == FirstStep::kLamp ? static_cast<QWidget*>(lamp_)
                                               : static_cast<QWidget*>(try_);
    next->setFocus(Qt::OtherFocusReason);
    if (step == FirstStep::kRoom) return;
    QTimer::singleShot(0, next, [this, next] { ensureWidgetVisible(next); });
  }

  FirstRunPanel& panel_;
  InterfacePanel& interface_;
  StepNumber* room_number_ = nullptr;
  StepNumber* lamp_number_ = nullptr;
  QLabel* room_hint_ = nullptr;
  QLineEdit* room_ = nullptr;
  QLabel* room_done_ = nullptr;
  QPushButton* room_save_ = nullptr;
  QWidget* fields_ = nullptr;
  QLineEdit* lamp_ = nullptr;
  ActionButton* try_ = nullptr;
  QPushButton* open_ = nullptr;
  bool lamp_named_ = false;
};

}  // namespace

QWidget* make_first_run_page(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home,
                             AddRoomPanel& add_room, AddDevicePanel& add_device) {
  return new FirstRunPage(panel, interface, home, add_room, add_device);
}

}  // namespace homewarden::view
