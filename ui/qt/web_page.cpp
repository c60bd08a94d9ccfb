#include <QCheckBox>
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

}  // namespace homewarden::view
