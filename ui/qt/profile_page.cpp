#include <QComboBox>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {

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

}  // namespace homewarden::view
