#include "ui/qt/web_page_access.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <tuple>

#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/list_editor_page.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/sized_label.h"

namespace homewarden::view {

QLineEdit* add_field(TextBox& control, const char* prompt, bool secret, QBoxLayout* rows,
                     QWidget* parent) {
  auto* place = new QVBoxLayout;
  place->setSpacing(4);
  place->addWidget(make_caption(tr(prompt), parent), 0, Qt::AlignBottom);
  auto* box = new QLineEdit(parent);
  bind(control, box, tr(prompt));
  if (secret) box->setEchoMode(QLineEdit::Password);
  place->addWidget(box);
  rows->addLayout(place, 1);
  return box;
}

Card::Card(QWidget* parent) : QWidget(parent), rows_(new QVBoxLayout(this)) {
  rows_->setContentsMargins(24, 20, 24, 20);
  rows_->setSpacing(10);
}

QHBoxLayout* Card::add_title(const QString& text) {
  auto* row = new QHBoxLayout;
  auto* title = new SizedLabel(1.14, true, SizedLabel::kText, this);
  title->setText(text);
  row->addWidget(title, 1);
  rows_->addLayout(row);
  return row;
}

void Card::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kCardCorner, look.card, look.line);
}

QWidget* make_access_card(WebPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  QHBoxLayout* title = card->add_title(tr("Access"));
  auto* lock = make_caption({}, card);
  lock->setWordWrap(false);
  bind(panel.lab_weblock, lock);
  title->addWidget(lock);
  QLineEdit* user = add_field(
      panel.txt_webuser, "Please enter a Username for the Web Server, you will use this to login",
      false, card->rows(), card);
  auto* twice = new QHBoxLayout;
  twice->setSpacing(12);
  QLineEdit* password = add_field(
      panel.txt_webpassword,
      "Please enter a Password for the Web Server, you will use this to login", true, twice, card);
  QLineEdit* again = add_field(
      panel.txt_webagain, "Please RE-enter your Password for the Web Server", true, twice, card);
  card->rows()->addLayout(twice);
  auto* mismatch = new SizedLabel(0.86, false, SizedLabel::kFailed, card);
  bind(panel.lab_webmismatch, mismatch);
  card->rows()->addWidget(mismatch);
  auto* buttons = new BreakingRow(card);
  QPushButton* set = make_button(panel.Command8, buttons);
  QPushButton* clear = make_button(panel.Command9, buttons);
  set_kind(clear, ButtonKind::kDanger);
  buttons->first()->addWidget(set);
  buttons->second()->addWidget(clear);
  buttons->second()->addStretch(1);
  card->rows()->addWidget(buttons);
  QObject::connect(user, &QLineEdit::returnPressed, password, [password] { password->setFocus(); });
  QObject::connect(password, &QLineEdit::returnPressed, again, [again] { again->setFocus(); });
  QObject::connect(again, &QLineEdit::returnPressed, set, &QPushButton::click);
  return card;
}

QWidget* make_trust_card(WebPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  auto* opener = new ActionButton(LineIcon::kRight, ButtonKind::kFlat, card);
  opener->setText(tr("Who else is trusted"));
  opener->setCheckable(true);
  card->rows()->addWidget(opener, 0, Qt::AlignLeft);
  auto* lists = new QWidget(card);
  auto* rows = new QVBoxLayout(lists);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(10);
  auto* heading = new SizedLabel(1.0, true, SizedLabel::kText, lists);
  heading->setText(tr("Names, Pages and Proxies That Are Trusted"));
  rows->addWidget(heading);
  auto* words = new SizedLabel(1.0, false, SizedLabel::kQuiet, lists);
  words->setText(
      tr("Addresses, this machine's own names, names without a dot and those that end in .local, "
         ".lan, .home and the like need not be listed. Several entries are separated by commas. "
         "100.64.0.0/10 is what some providers and VPNs use. What is saved takes effect at once: "
         "the web server starts anew."));
  rows->addWidget(words);
  auto* save = make_button(panel.cmd_webaccess, lists);
  const std::tuple<TextBox*, const char*, const char*> boxes[] = {
      {&panel.txt_webhosts, "Further names of this house", "house.example.org"},
      {&panel.txt_weborigins, "Foreign pages that may look and switch",
       "http://dashboard.lan:3000"},
      {&panel.txt_webproxies, "Proxies that tell for whom they ask", "127.0.0.1"}};
  for (const auto& [control, name, example] : boxes) {
    QLineEdit* box = add_field(*control, name, false, rows, lists);
    box->setPlaceholderText(tr(example));
    QObject::connect(box, &QLineEdit::returnPressed, save, &QPushButton::click);
  }
  auto* shared = new QCheckBox(lists);
  bind(panel.chk_webshared, shared);
  rows->addWidget(shared);
  rows->addWidget(save, 0, Qt::AlignLeft);
  card->rows()->addWidget(lists);
  lists->hide();
  QObject::connect(opener, &QPushButton::toggled, lists, [lists, opener](bool open) {
    lists->setVisible(open);
    opener->set_icon(open ? LineIcon::kDown : LineIcon::kRight);
  });
  return card;
}

}  // namespace homewarden::view
