#include <QComboBox>
#include <QPushButton>
#include <QShortcut>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/list_editor_page.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/profile_cards.h"
#include "ui/qt/sentence_box.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

class ProfilePage : public ListEditorPage {
 public:
  explicit ProfilePage(ProfilePanel& panel)
      : ListEditorPage(tr("Profiles"), [this] { leave(); }), panel_(panel) {
    bind(panel.lab_profileactive, subtitle());
    add_choice();
    add_to_list(new ProfileCards(panel, list_side()));
    auto* words = make_caption(
        tr("Power profiles allow you to set different sets of events based on things like "
           "Holidays, Weekends, Business Trips etc. When you select a different profile above, "
           "your will get a new events list. Whatever you set as an event in one profile, will not "
           "be shown in a different profile."),
        list_side());
    add_to_list(words);
    list_rows()->addStretch(1);
    add_seen();
    follow(panel.profile_open, this, [this](bool open) { open_editor(open); });
    auto* back = new QShortcut(Qt::Key_Escape, this);
    back->setContext(Qt::WidgetWithChildrenShortcut);
    connect(back, &QShortcut::activated, this, [this] { leave(); });
  }

 private:
  void leave() { panel_.profile_open = false; }

  void add_choice() {
    auto* label = new SizedLabel(1.0, false, SizedLabel::kText, list_side());
    label->setText(tr("Select a different power profile from this drop down list"));
    add_to_list(label);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kReach, 0, kReach, 4);
    row->addWidget(make_combo(panel_.com_profile, tr("Profile"), list_side()));
    row->addStretch(1);
    list_rows()->addLayout(row);
  }

  void add_seen() {
    QWidget* body = editor_side();
    bind(panel_.lab_profileseen, editor_title());
    editor_rows()->addWidget(new ProfileEvents(panel_, body));
    editor_rows()->addSpacing(8);
    editor_rows()->addWidget(new SentenceBox(panel_.lab_profilenote, body));
    editor_rows()->addStretch(1);
    QPushButton* change = make_button(panel_.cmd_switchprofile, editor_foot()->parentWidget());
    set_kind(change, ButtonKind::kPrimary);
    editor_foot()->addWidget(change);
  }

  ProfilePanel& panel_;
};

}  // namespace

QWidget* make_profiles_page(ProfilePanel& panel) {
  return new ProfilePage(panel);
}

}  // namespace homewarden::view
