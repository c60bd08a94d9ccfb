#include "ui/qt/web_page_https.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/list_editor_page.h"
#include "ui/qt/page.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/web_page_access.h"

namespace homewarden::view {
namespace {

SizedLabel* add_words(Label& control, double size, SizedLabel::Tone tone, QBoxLayout* rows,
                      QWidget* parent) {
  auto* words = new SizedLabel(size, false, tone, parent);
  words->setTextFormat(Qt::PlainText);
  bind(control, words);
  rows->addWidget(words);
  return words;
}

void add_check(CheckBox& control, QBoxLayout* rows, QWidget* parent) {
  auto* box = new QCheckBox(parent);
  bind(control, box);
  rows->addWidget(box);
}

}  // namespace

QWidget* make_https_card(HttpsPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  QVBoxLayout* rows = card->rows();
  card->add_title(tr("HTTPS"));
  add_words(panel.lab_webhttps, 0.86, SizedLabel::kQuiet, rows, card);
  add_check(panel.chk_webhttps, rows, card);
  QPushButton* save = make_button(panel.cmd_webhttps, card);
  QLineEdit* fields[] = {
      add_field(panel.txt_webhttpsport, "Port of https", false, rows, card),
      add_field(panel.txt_webcert, "File of the certificate (PEM)", false, rows, card),
      add_field(panel.txt_webkey, "File of its key (PEM)", false, rows, card)};
  for (QLineEdit* field : fields)
    QObject::connect(field, &QLineEdit::returnPressed, save, &QPushButton::click);
  rows->addWidget(make_button(panel.cmd_makecert, card), 0, Qt::AlignLeft);
  SizedLabel* says = add_words(panel.lab_webcert, 0.86, SizedLabel::kText, rows, card);
  says->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  rows->addSpacing(6);
  rows->addWidget(make_caption(tr("What comes without https is"), card));
  rows->addWidget(make_combo(panel.com_webplain, tr("What comes without https is"), card));
  add_check(panel.chk_webhsts, rows, card);
  add_check(panel.chk_webplainpassword, rows, card);
  rows->addWidget(save, 0, Qt::AlignLeft);
  return card;
}

}  // namespace homewarden::view
