// The panels of the web server, the profiles and the speech reminders.

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {

namespace {

void add_access_lists(WebPanel& panel, Page* page) {
  QWidget* body = page->body();
  page->add_heading(tr("Names, Pages and Proxies That Are Trusted"));
  page->add_text(
      tr("Addresses, this machine's own names, names without a dot and those that end in .local, "
         ".lan, .home and the like need not be listed. Several entries are separated by commas. "
         "100.64.0.0/10 is what some providers and VPNs use. What is saved takes effect at once: "
         "the web server starts anew."));
  QFormLayout* form = page->add_form();
  auto* save = make_button(panel.cmd_webaccess, body);
  const std::tuple<TextBox*, const char*, const char*> lists[] = {
      {&panel.txt_webhosts, "Further names of this house", "house.example.org"},
      {&panel.txt_weborigins, "Foreign pages that may look and switch",
       "http://dashboard.lan:3000"},
      {&panel.txt_webproxies, "Proxies that tell for whom they ask", "127.0.0.1"}};
  for (const auto& [list, name, example] : lists) {
    auto* box = new QLineEdit(body);
    bind(*list, box, tr(name));
    box->setPlaceholderText(tr(example));
    QObject::connect(box, &QLineEdit::returnPressed, save, &QPushButton::click);
    form->addRow(tr(name), box);
  }
  auto* shared = new QCheckBox(body);
  bind(panel.chk_webshared, shared);
  page->rows()->addWidget(shared);
  page->rows()->addWidget(save, 0, Qt::AlignLeft);
}

}  // namespace

QWidget* make_web_page(WebPanel& panel) {
  auto* page = new Page(tr("Web Server"));
  QWidget* body = page->body();
  auto* running = new QLabel(body);
  bind(panel.Label48, running);
  page->rows()->addWidget(running);

  auto* port = new QHBoxLayout;
  port->addWidget(new QLabel(tr("Port"), body));
  auto* box = new QLineEdit(body);
  bind(panel.txt_webport, box, tr("Port of the web server"));
  box->setMaximumWidth(110);
  port->addWidget(box);
  QPushButton* save = make_button(panel.Command7, body);
  QObject::connect(box, &QLineEdit::returnPressed, save, &QPushButton::click);
  port->addWidget(save);
  port->addStretch();
  page->rows()->addLayout(port);

  bind(panel.lab_webstate, page->add_text({}, false));
  page->add_heading(tr("Access"));
  auto* access = new QHBoxLayout;
  for (Button* button : {&panel.Command8, &panel.Command9, &panel.Command10})
    access->addWidget(make_button(*button, body));
  access->addStretch();
  page->rows()->addLayout(access);
  add_access_lists(panel, page);
  page->add_rest();
  return page;
}

QWidget* make_profiles_page(ProfilePanel& panel) {
  auto* page = new Page(tr("Profiles"));
  page->add_text(tr("Select a different power profile from this drop down list"), false);
  page->rows()->addWidget(make_combo(panel.com_profile, tr("Profile"), page->body()), 0,
                          Qt::AlignLeft);
  page->add_text(
      tr("Power profiles allow you to set different sets of events based on things like Holidays, "
         "Weekends, Business Trips etc. When you select a different profile above, your will get a "
         "new events list. Whatever you set as an event in one profile, will not be shown in a "
         "different profile."));
  page->add_rest();
  return page;
}

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
