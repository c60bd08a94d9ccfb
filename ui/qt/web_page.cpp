#include <QCheckBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/copy_button.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/qr_code.h"
#include "ui/qt/shapes.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/watch.h"
#include "ui/qt/web_page_access.h"
#include "ui/qt/web_page_https.h"
#include "ui/qt/web_page_tokens.h"

namespace homewarden::view {
namespace {

// The address in large letters, as a link that wraps where it is too long for one line.
QWidget* make_address(Label& address, QWidget* parent) {
  auto* label = new SizedLabel(1.43, false, SizedLabel::kLink, parent);
  label->setTextFormat(Qt::RichText);
  label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  bind_common(address, label, tr("Address of the pages"));
  follow(address.caption, label, [label](const std::string& text) {
    const QString shown = qt::from_code_page(text).toHtmlEscaped();
    label->setText("<a href=\"" + shown + "\">" + shown + "</a>");
  });
  QObject::connect(label, &QLabel::linkActivated, label, [&address] { address.click(); });
  return label;
}

QPushButton* make_open(WebPanel& panel, QWidget* parent) {
  auto* open = new ActionButton(LineIcon::kLink, ButtonKind::kPrimary, parent);
  open->setText(tr("Open in browser"));
  QObject::connect(open, &QPushButton::clicked, open, [&panel] { panel.lab_webaddress.click(); });
  return open;
}

// What a phone needs: the square to the left, the address beside it; one below the other where
// there is no room.
QWidget* make_address_card(WebPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  auto* sides = new BreakingRow(card);
  card->rows()->addWidget(sides);
  auto* code = new QrCode(sides);
  sides->first()->addWidget(code, 0, Qt::AlignTop | Qt::AlignLeft);
  sides->first()->setSpacing(24);
  auto* words = new QVBoxLayout;
  words->setSpacing(8);
  auto* port = new SizedLabel(1.0, false, SizedLabel::kText, sides);
  bind(panel.Label48, port);
  words->addWidget(port);
  words->addWidget(make_address(panel.lab_webaddress, sides));
  auto* hint = new SizedLabel(1.0, false, SizedLabel::kQuiet, sides);
  words->addWidget(hint);
  auto* buttons = new BreakingRow(sides);
  QPushButton* open = make_open(panel, buttons);
  QPushButton* copy = make_copy(panel.cmd_copyaddress, panel.lab_webaddress.caption, buttons);
  buttons->first()->addWidget(open);
  auto* others = new BreakingRow(buttons);
  copy->setParent(others);
  others->first()->addWidget(copy);
  others->second()->addWidget(make_button(panel.Command10, others));
  others->second()->addStretch(1);
  buttons->second()->addWidget(others, 1);
  words->addSpacing(4);
  words->addWidget(buttons);
  words->addStretch(1);
  sides->second()->addLayout(words, 1);
  const auto show = [&panel, code, words, hint, open, copy] {
    const bool answers = panel.lab_webaddress.visible;
    const bool has_code = answers && panel.is_in_network;
    code->setVisible(has_code);
    words->setContentsMargins(has_code ? 16 : 0, 0, 0, 0);
    code->show_text(qt::from_code_page(panel.lab_webaddress.caption.get()));
    hint->setText(!answers ? tr("Nothing answers until the web server runs: save another port.")
                  : panel.is_in_network
                      ? tr("Point a phone's camera at the square, or type this address.")
                      : tr("This address is good on this computer only: it is in no network."));
    open->setEnabled(answers);
    copy->setEnabled(answers);
  };
  follow(panel.lab_webaddress.caption, card, [show](const std::string&) { show(); });
  watch(panel.lab_webaddress.visible.changed, card, show);
  bind(panel.lab_webstate, [card] {
    auto* state = new SizedLabel(0.86, false, SizedLabel::kQuiet, card);
    card->rows()->addWidget(state);
    return state;
  }());
  return card;
}

QWidget* make_port_card(WebPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  card->add_title(tr("Port"));
  auto* hint = new SizedLabel(0.86, false, SizedLabel::kQuiet, card);
  hint->setText(tr("80, or 8080 where 80 is taken"));
  card->rows()->addWidget(hint);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  auto* box = new QLineEdit(card);
  bind(panel.txt_webport, box, tr("Port of the web server"));
  row->addWidget(box, 1);
  QPushButton* save = make_button(panel.Command7, card);
  QObject::connect(box, &QLineEdit::returnPressed, save, &QPushButton::click);
  row->addWidget(save);
  card->rows()->addLayout(row);
  card->rows()->addStretch(1);
  return card;
}

}  // namespace

QWidget* make_web_page(WebPanel& panel) {
  auto* page = new Page(tr("Web Server"), 0);
  QWidget* body = page->body();
  page->rows()->setSpacing(16);
  page->show_subtitle();
  page->subtitle()->setText(
      tr("Your house in a browser, on every phone, tablet and television at home"));
  page->rows()->addWidget(make_address_card(panel, body));
  auto* cards = new BreakingRow(body);
  cards->first()->addWidget(make_port_card(panel, cards));
  cards->second()->addWidget(make_access_card(panel, cards), 1);
  page->rows()->addWidget(cards);
  page->rows()->addWidget(make_https_card(panel, body));
  page->rows()->addWidget(make_token_card(panel, body));
  page->rows()->addWidget(make_trust_card(panel, body));
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
