#include "ui/qt/web_page_tokens.h"

#include <QLineEdit>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/copy_button.h"
#include "ui/qt/page.h"
#include "ui/qt/segments.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/token_rows.h"
#include "ui/qt/watch.h"
#include "ui/qt/web_page_access.h"

namespace homewarden::view {
namespace {

// The token that was just made, ready to be copied by the button or by the keys.
QWidget* make_new_token(TokenPanel& panel, QWidget* parent) {
  auto* area = new QWidget(parent);
  auto* rows = new QVBoxLayout(area);
  rows->setContentsMargins(0, 8, 0, 0);
  rows->setSpacing(8);
  auto* words = new SizedLabel(1.0, false, SizedLabel::kText, area);
  words->setTextFormat(Qt::PlainText);
  bind(panel.lab_newtoken, words);
  rows->addWidget(words);
  auto* row = new BreakingRow(area);
  row->let_first_grow();
  auto* field = new QLineEdit(row);
  field->setReadOnly(true);
  bind(panel.txt_newtoken, field, tr("New token"));
  QObject::connect(field, &QLineEdit::textChanged, field, [field] { field->setCursorPosition(0); });
  row->first()->addWidget(field, 1);
  row->second()->addWidget(make_copy(panel.cmd_copytoken, panel.txt_newtoken.text, row));
  rows->addWidget(row);
  follow(panel.txt_newtoken.visible, area, [area](bool there) { area->setVisible(there); });
  return area;
}

}  // namespace

QWidget* make_token_card(TokenPanel& panel, QWidget* parent) {
  auto* card = new Card(parent);
  card->add_title(tr("Programs"));
  auto* words = new SizedLabel(0.86, false, SizedLabel::kQuiet, card);
  words->setText(
      tr("A program of your own asks the house with a token instead of a user and a password. "
         "What it can ask is described at /api/v1/openapi.json."));
  card->rows()->addWidget(words);
  card->rows()->addWidget(new TokenRows(panel, card));
  QLineEdit* name =
      add_field(panel.txt_tokenname, "Name of the program", false, card->rows(), card);
  auto* making = new BreakingRow(card);
  making->first()->addWidget(
      make_segments(panel.com_tokenright, tr("What the program may do"), making));
  QPushButton* make = make_button(panel.cmd_maketoken, making);
  making->second()->addWidget(make, 0, Qt::AlignBottom);
  making->second()->addStretch(1);
  card->rows()->addWidget(making);
  card->rows()->addWidget(make_new_token(panel, card));
  QObject::connect(name, &QLineEdit::returnPressed, make, &QPushButton::click);
  return card;
}

}  // namespace homewarden::view
