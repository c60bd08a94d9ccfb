#include <QPushButton>
#include <QStackedWidget>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/first_run_page.h"
#include "ui/qt/flow_grid.h"
#include "ui/qt/halves.h"
#include "ui/qt/home_boxes.h"
#include "ui/qt/home_tiles.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/link_button.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kChipWidth = 34;  // in letters
constexpr int kTileWidth = 31;
constexpr int kAsideWidth = 50;
constexpr int kBeside = 104;     // so wide a page has room for two columns
constexpr int kHeadHeight = 36;  // of both halves, so that what stands below begins at one line

class HomePage : public Page {
 public:
  HomePage(HomePanel& home, InterfacePanel& interface)
      : Page(QString(), 0),
        home_(home),
        chips_(new FlowGrid(kChipWidth, FlowGrid::Fill::kKeep, 12, body())),
        tiles_(new FlowGrid(kTileWidth, FlowGrid::Fill::kStretch, 12, body())),
        add_room_(new AddTile(qt::from_code_page(home.Label3.caption.get()), tiles_)),
        halves_(new Halves(kBeside, kAsideWidth, body())) {
    bind(home.lab_home, title());
    bind(home.lab_today, subtitle());
    show_subtitle();
    add_all_off();
    follow(home.chips, this, [this](const std::vector<HomeChip>& chips) { show_chips(chips); });
    rows()->setSpacing(20);
    rows()->addWidget(chips_);
    auto* more = make_quiet_label(body());
    bind(home.lab_morechips, more);
    rows()->addWidget(more);
    fill_rooms();
    fill_aside(interface);
    rows()->addWidget(halves_);
    add_rest();
  }

 private:
  void add_all_off() {
    add_action(make_action(home_.cmd_alloff, LineIcon::kPower, ButtonKind::kPlain, body()));
  }

  void fill_rooms() {
    QWidget* half = halves_->left_half();
    QVBoxLayout* column = halves_->left();
    auto* head = new QHBoxLayout;
    head->addStrut(kHeadHeight);
    head->addWidget(make_heading(tr("Rooms"), half));
    head->addStretch();
    head->addWidget(new LinkButton(home_.Label4, 1, LineIcon::kPlus, half));
    column->addLayout(head);
    tiles_->setParent(half);
    column->addWidget(tiles_);
    QObject::connect(add_room_, &QAbstractButton::clicked, this, [this] { home_.Label3.click(); });
    follow(home_.tiles, this, [this](const std::vector<RoomTile>& tiles) { show_tiles(tiles); });
    auto* hints = new QVBoxLayout;
    hints->setSpacing(2);
    column->addLayout(hints);
    for (const char* text :
         {"To remove a room, highlight the room in the left hand list and then press CTRL & D",
          "To remove a device, highlight the device in the left hand list and then press CTRL & "
          "D"}) {
      auto* hint = new ScaledLabel(0.86, false, ScaledLabel::Tone::kQuiet, half);
      hint->setWordWrap(true);
      hint->setText(tr(text));
      hints->addWidget(hint);
    }
    column->addStretch();
  }

  void fill_aside(InterfacePanel& interface) {
    QWidget* half = halves_->right_half();
    QVBoxLayout* column = halves_->right();
    auto* head = new QHBoxLayout;
    head->addWidget(make_heading(tr("Next events"), half));
    head->addStrut(kHeadHeight);
    column->addLayout(head);
    column->addWidget(make_coming_box(home_, half));
    column->addWidget(make_interface_box(interface, home_, half));
    column->addWidget(make_notice_box(home_.lab_notice, half));
    column->addStretch();
  }

  // A chip stays the same widget as long as its device is shown.
  void show_chips(const std::vector<HomeChip>& chips) {
    QHash<QString, ChipButton*> before = std::exchange(chip_of_, {});
    QList<QWidget*> cells;
    for (const HomeChip& chip : chips) {
      const QString key = qt::from_code_page(chip.key);
      ChipButton* button = before.take(key);
      if (!button) button = make_chip(chip.key);
      button->show_chip(chip);
      if (!chip_of_.contains(key)) cells << button;
      chip_of_[key] = button;
    }
    for (ChipButton* gone : std::as_const(before)) retire(gone);
    chips_->set_cells(cells);
    chips_->setVisible(!cells.isEmpty());
  }

  ChipButton* make_chip(const std::string& key) {
    auto* button = new ChipButton(chips_);
    connect(button, &QAbstractButton::clicked, this, [this, key] { home_.chip_pressed(key); });
    return button;
  }

  void show_tiles(const std::vector<RoomTile>& tiles) {
    while (tile_buttons_.size() > static_cast<qsizetype>(tiles.size()))
      retire(tile_buttons_.takeLast());
    while (tile_buttons_.size() < static_cast<qsizetype>(tiles.size()))
      tile_buttons_ << make_tile(static_cast<std::size_t>(tile_buttons_.size()));
    QList<QWidget*> cells;
    for (std::size_t place = 0; place < tiles.size(); ++place) {
      auto* button = tile_buttons_[static_cast<qsizetype>(place)];
      button->show_tile(tiles[place]);
      cells << button;
    }
    cells << add_room_;
    tiles_->set_cells(cells);
  }

  TileButton* make_tile(std::size_t place) {
    auto* button = new TileButton(tiles_);
    connect(button, &QAbstractButton::clicked, this, [this, place] {
      const auto& tiles = home_.tiles.get();
      if (place < tiles.size()) home_.tile_pressed(std::string(tiles[place].name));
    });
    return button;
  }

  // It may be the one that is being pressed.
  static void retire(QWidget* widget) {
    widget->hide();
    widget->deleteLater();
  }

  HomePanel& home_;
  FlowGrid* chips_;
  FlowGrid* tiles_;
  AddTile* add_room_;
  Halves* halves_;
  QHash<QString, ChipButton*> chip_of_;
  QList<TileButton*> tile_buttons_;
};

// The page of the house, or that of its beginning.
class HomeStack : public QStackedWidget {
 public:
  explicit HomeStack(FrmMain& form) {
    follow(form.is_first_run, this, [this, &form](bool first) {
      QWidget*& page = first ? first_run_ : home_;
      if (!page) {
        page = first ? make_first_run_page(form, form, form, form, form) : new HomePage(form, form);
        addWidget(page);
      }
      setCurrentWidget(page);
    });
  }

 private:
  QWidget* home_ = nullptr;
  QWidget* first_run_ = nullptr;
};

}  // namespace

QWidget* make_home_page(FrmMain& form) {
  return new HomeStack(form);
}

}  // namespace homewarden::view
