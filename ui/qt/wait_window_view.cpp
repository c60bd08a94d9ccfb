#include "ui/qt/wait_window_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kIcon = 56;

}  // namespace

WaitWindowView::WaitWindowView(FrmWait& form)
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
  setFixedWidth(420);
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(22, 20, 22, 18);
  columns->setSpacing(18);
  auto* picture = new QLabel(this);
  picture->setPixmap(QIcon(":/icons/homewarden.png").pixmap(QSize(kIcon, kIcon)));
  columns->addWidget(picture, 0, Qt::AlignTop);
  auto* rows = new QVBoxLayout;
  rows->setSpacing(8);
  columns->addLayout(rows, 1);

  auto* title = new QLabel(this);
  title->setFont(scaled_font(title->font(), 1.25, true));
  bind(form.Label2, title);
  rows->addWidget(title);
  auto* progress = new QLabel(this);
  bind(form.Label1, progress);
  rows->addWidget(progress);
  auto* bar = new QProgressBar(this);
  bar->setRange(0, 0);  // busy: nobody knows how long
  bar->setTextVisible(false);
  bar->setFixedHeight(8);
  bar->setAccessibleName(tr("Working"));
  rows->addWidget(bar);
  rows->addWidget(make_link(form.lab_wait, this), 0, Qt::AlignLeft);

  follow(form.Label2.caption, this,
         [this](const std::string& text) { setWindowTitle(qt::from_code_page(text)); });
  follow(form.visible, this, [this](bool visible) {
    if (visible && screen()) {
      adjustSize();
      move(screen()->availableGeometry().center() - rect().center());
    }
    setVisible(visible);
  });
}

// It goes by itself when the work is done.
void WaitWindowView::closeEvent(QCloseEvent* event) {
  event->ignore();
}

}  // namespace homewarden::view
