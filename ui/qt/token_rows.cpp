#include "ui/qt/token_rows.h"

#include <QPushButton>

#include "platform/qt/text_codec.h"
#include "ui/qt/box.h"
#include "ui/qt/house_style.h"
#include "ui/qt/page.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/steady_button.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

class TokenRow : public QWidget {
 public:
  TokenRow(TokenPanel& panel, bool is_damaged, QWidget* parent)
      : QWidget(parent),
        is_damaged_(is_damaged),
        name_(new SizedLabel(1.0, true, SizedLabel::kText, this)),
        words_(new SizedLabel(0.86, false, is_damaged ? SizedLabel::kFailed : SizedLabel::kQuiet,
                              this)),
        revoke_(new SteadyButton(tr("Revoke"), this)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(10);
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    name_->setTextFormat(Qt::PlainText);
    texts->addWidget(name_);
    texts->addWidget(words_);
    row->addLayout(texts, 1);
    set_kind(revoke_, ButtonKind::kDanger);
    row->addWidget(revoke_, 0, Qt::AlignVCenter);
    rows->addLayout(row);
    rows->addWidget(new Rule(this));
    connect(revoke_, &QPushButton::clicked, this, [this, &panel] { panel.revoke_asked(place_); });
  }

  int place() const { return place_; }
  bool is_damaged() const { return is_damaged_; }

  void show_face(const TokenFace& face) {
    place_ = face.place;
    const QString name = qt::from_code_page(face.name);
    name_->setText(name);
    words_->setText(qt::from_code_page(face.right) + ". " + qt::from_code_page(face.dates) + ".");
    revoke_->setAccessibleName(tr("Revoke %1").arg(name));
    revoke_->setAccessibleDescription(words_->text());
  }

 private:
  bool is_damaged_;
  SizedLabel* name_;
  SizedLabel* words_;
  QPushButton* revoke_;
  int place_ = 0;
};

TokenRows::TokenRows(TokenPanel& panel, QWidget* parent)
    : QWidget(parent), panel_(panel), places_(new QVBoxLayout(this)) {
  places_->setContentsMargins(0, 0, 0, 0);
  places_->setSpacing(10);
  auto* nothing = new SizedLabel(1.0, false, SizedLabel::kQuiet, this);
  nothing->setText(tr("There are no tokens yet."));
  places_->addWidget(nothing);
  nothing_ = nothing;
  follow(panel.tokenfaces, this, [this](const auto&) { show_faces(); });
}

// Rows are kept as long as they are the same ones: the focus may be on one of their buttons.
void TokenRows::show_faces() {
  const auto& faces = panel_.tokenfaces.get();
  QList<TokenRow*> kept;
  for (const TokenFace& face : faces) {
    TokenRow* row = nullptr;
    for (TokenRow* old : rows_)
      if (old->place() == face.place && old->is_damaged() == face.is_damaged) row = old;
    if (row == nullptr) row = new TokenRow(panel_, face.is_damaged, this);
    row->show_face(face);
    places_->removeWidget(row);
    places_->addWidget(row);
    kept << row;
  }
  for (TokenRow* old : rows_) {
    if (kept.contains(old)) continue;
    old->hide();
    old->deleteLater();
  }
  rows_ = kept;
  nothing_->setVisible(faces.empty());
}

}  // namespace homewarden::view
