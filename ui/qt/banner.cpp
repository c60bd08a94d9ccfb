#include "ui/qt/banner.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/box.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

class Plug : public QWidget {
 public:
  explicit Plug(QWidget* parent) : QWidget(parent) { setFixedSize(20, 20); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    draw_icon(painter, LineIcon::kPlug, rect(), look_of(palette()).failed);
  }
};

}  // namespace

QWidget* make_banner(InterfacePanel& panel, const std::vector<Frame*>& needing, QWidget* parent) {
  auto* place = new QWidget(parent);
  auto* around = new QVBoxLayout(place);
  around->setContentsMargins(Page::kMargin, Page::kMargin - 4, Page::kMargin, 0);
  auto* box = new Box(place, 10, Box::Kind::kFailed);
  around->addWidget(box);
  auto* columns = new QHBoxLayout;
  columns->setSpacing(12);
  columns->setContentsMargins(8, 0, 0, 0);
  columns->addWidget(new Plug(box));
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  auto* what = new ScaledLabel(1, true, ScaledLabel::Tone::kText, box);
  what->setWordWrap(true);
  auto* help = new ScaledLabel(1, false, ScaledLabel::Tone::kText, box);
  help->setWordWrap(true);
  words->addWidget(what);
  words->addWidget(help);
  columns->addLayout(words, 1);
  auto* look = new QPushButton(box);
  columns->addWidget(look);
  box->rows()->addLayout(columns);
  look->setText(qt::from_code_page(panel.cmd_look.caption.get()));
  QObject::connect(look, &QPushButton::clicked, look, [&panel] { panel.cmd_look.click(); });
  follow(panel.lab_interface.caption, what,
         [what](const std::string& text) { what->setText(qt::from_code_page(text)); });
  follow(panel.lab_interfacehelp.caption, help,
         [help](const std::string& text) { help->setText(qt::from_code_page(text)); });
  const auto show = [&panel, needing, place] {
    const InterfaceCondition condition = panel.condition;
    const bool none =
        condition == InterfaceCondition::kMissing || condition == InterfaceCondition::kRefused;
    const bool needed = std::any_of(needing.begin(), needing.end(),
                                    [](const Frame* frame) { return frame->visible.get(); });
    place->setVisible(condition == InterfaceCondition::kUnplugged || (none && needed));
  };
  watch(panel.condition.changed, place, show);
  for (Frame* frame : needing) watch(frame->visible.changed, place, show);
  show();
  return place;
}

}  // namespace homewarden::view
