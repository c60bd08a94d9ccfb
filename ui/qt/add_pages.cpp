#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <utility>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {
namespace {

// Selects its whole text when it gets the focus, so that typing replaces it; but what is half typed
// when its page is taken away and given back can be gone on with.
class NameBox : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    const bool came_back = event->reason() == Qt::OtherFocusReason && isModified();
    if (came_back)
      deselect();
    else
      selectAll();
    clicked_ = event->reason() == Qt::MouseFocusReason;
  }
  // The click that brought the focus comes second and would put the cursor where it was.
  void mousePressEvent(QMouseEvent* event) override {
    QLineEdit::mousePressEvent(event);
    if (std::exchange(clicked_, false)) selectAll();
  }

 private:
  bool clicked_ = false;
};

// Escape leaves it.
class AddPage : public Page {
 public:
  AddPage(const QString& title, const Signal<>& left) : Page(title, 520), left_(left) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape)
      left_();
    else
      Page::keyPressEvent(event);
  }

 private:
  const Signal<>& left_;
};

QLineEdit* make_line(TextBox& control, const QString& name, QWidget* parent) {
  auto* line = new NameBox(parent);
  bind(control, line, name);
  return line;
}

// Enter in the line saves too.
void add_buttons(Button& control, const Signal<>& left, QLineEdit* line, Page* page) {
  auto* button = make_button(control, page->body());
  set_kind(button, ButtonKind::kPrimary);
  auto* cancel = new QPushButton(tr("Cancel"), page->body());
  cancel->setToolTip(tr("Back without adding anything (Esc)"));
  QObject::connect(cancel, &QPushButton::clicked, cancel, [&left] { left(); });
  QObject::connect(button, &QPushButton::pressed, button, [button] { button->setFocus(); });
  QObject::connect(line, &QLineEdit::returnPressed, button, &QPushButton::click);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(button);
  row->addWidget(cancel);
  row->addStretch();
  page->rows()->addLayout(row);
}

}  // namespace

QWidget* make_add_room_page(AddRoomPanel& panel) {
  auto* page = new AddPage(tr("Add a new room"), panel.room_abandoned);
  page->add_text(tr("Type in your room name below, then click on Save"));
  QLineEdit* name = make_line(panel.txt_roomname, tr("Room name"), page->body());
  page->rows()->addWidget(name);
  add_buttons(panel.Command3, panel.room_abandoned, name, page);
  page->add_rest();
  return page;
}

QWidget* make_add_device_page(AddDevicePanel& panel) {
  auto* page = new AddPage(tr("Add a new device"), panel.device_abandoned);
  QWidget* body = page->body();
  page->add_text(
      tr("Please select the room you wish to add the new device to from this drop down list"));
  page->rows()->addWidget(make_combo(panel.lst_temproom, tr("Room"), body));
  page->add_text(tr("Type in a name for your device"));
  QLineEdit* name = make_line(panel.txt_devname, tr("Device name"), body);
  page->rows()->addWidget(name);
  page->add_text(tr("Select the house code and device number"));
  auto* address = new QHBoxLayout;
  address->addWidget(new QLabel(tr("Code"), body));
  address->addWidget(make_combo(panel.lst_housecode, tr("House code"), body));
  address->addSpacing(12);
  address->addWidget(new QLabel(tr("Number"), body));
  address->addWidget(make_combo(panel.lst_device, tr("Device number"), body));
  address->addStretch();
  page->rows()->addLayout(address);
  page->add_text(tr("Select the device type from this list"));
  page->rows()->addWidget(make_combo(panel.lst_devicetype, tr("Device type"), body));
  page->add_text(
      tr("When you are finished, click on Save to save your new device and add it to the list"));
  add_buttons(panel.Command4, panel.device_abandoned, name, page);
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
