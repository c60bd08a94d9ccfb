// The boxes and buttons of the event editor and the location settings under real keys and clicks.

#include <QListView>
#include <QRadioButton>

#include "core/lists/choice_lists.h"
#include "tests/window/form_window.h"

namespace homewarden::testing {
namespace {

struct EditorControlsTest : FormWindow {
  EditorControlsTest() {
    fill_event_lists(form);
    fill_dim_list(form);
    form.com_city.items = std::vector<std::string>{"Lisbon, Portugal", "London, England",
                                                   "Los Angeles, California", "Paris, France"};
    form.editor_open = true;
    form.lst_hour.click.connect([this] { chosen.push_back(form.lst_hour.text); });
    form.com_city.click.connect([this] { chosen.push_back(form.com_city.text); });
    open();
  }

  QComboBox* show_city() {
    form.frm_settings.visible = true;
    return named<QComboBox>("City");
  }
  // Lets the layouts become final.
  static void settle() {
    for (int turn = 0; turn < 3; ++turn) QApplication::processEvents();
  }
  // Types over what is there; the list of fitting entries opens.
  static QWidget* type(QComboBox* box, const char* text) {
    box->setFocus();
    box->lineEdit()->selectAll();
    QTest::keyClicks(box->lineEdit(), text);
    return QApplication::activePopupWidget();
  }

  std::vector<std::string> chosen;
};

TEST_F(EditorControlsTest, AnEntryIsChosenWithTheMouseAndWithKeys) {
  form.frm_event.visible = true;
  auto* hour = named<QComboBox>("Hour");
  ASSERT_TRUE(hour);
  hour->setFocus();
  QTest::keyClick(hour->lineEdit(), Qt::Key_Down);
  EXPECT_THAT(chosen, ElementsAre("01"));
  QTest::keyClick(hour->lineEdit(), Qt::Key_Down, Qt::AltModifier);
  ASSERT_TRUE(hour->view()->isVisible());
  QTest::keyClick(hour->view(), Qt::Key_End);
  EXPECT_THAT(chosen, ElementsAre("01")) << "moving through the open list chose an entry";
  QTest::keyClick(hour->view(), Qt::Key_Return);
  EXPECT_THAT(chosen, ElementsAre("01", "sSet"));
  hour->showPopup();
  const QModelIndex entry = hour->model()->index(22, 0);
  hour->view()->scrollTo(entry);
  QTest::qWait(QApplication::doubleClickInterval() + 50);  // not the click that opened the list
  QTest::mouseClick(hour->view()->viewport(), Qt::LeftButton, {},
                    hour->view()->visualRect(entry).center());
  EXPECT_THAT(chosen, ElementsAre("01", "sSet", "22"));
  QTest::keyClick(hour->lineEdit(), Qt::Key_Down, Qt::AltModifier);
  QTest::keyClick(hour->view(), Qt::Key_Home);
  QTest::keyClick(hour->view(), Qt::Key_Escape);
  EXPECT_EQ(chosen.size(), 3u);
  EXPECT_EQ(form.lst_hour.text.get(), "22");
}

// The page of the panel that was open last is made before the program has filled the lists.
TEST_F(EditorControlsTest, ChoicesThatComeLateAreShown) {
  form.lst_freq.items = std::vector<std::string>{};
  form.frm_event.visible = true;
  settle();
  fill_event_lists(form);
  settle();
  auto* once = named<QRadioButton>("Frequency: once");
  ASSERT_TRUE(once && once->isVisible());
  auto* daily = named<QRadioButton>("Frequency: daily");
  EXPECT_EQ(once->mapTo(view.get(), QPoint()).y(), daily->mapTo(view.get(), QPoint()).y());
  QTest::mouseClick(once, Qt::LeftButton);
  EXPECT_EQ(form.lst_freq.text.get(), "once");
}

TEST_F(EditorControlsTest, EnterChoosesTheCityThatWasTyped) {
  QComboBox* city = show_city();
  QWidget* offered = type(city, "lon");
  ASSERT_TRUE(offered);
  EXPECT_THAT(chosen, IsEmpty());
  QTest::keyClick(offered, Qt::Key_Return);
  EXPECT_THAT(chosen, ElementsAre("London, England"));
  EXPECT_EQ(city->currentText(), "London, England");

  offered = type(city, "lo");
  ASSERT_TRUE(offered);
  QTest::keyClick(offered, Qt::Key_Return);
  EXPECT_EQ(chosen.size(), 1u) << "one of several was taken unasked";
  offered = type(city, "lo");
  QTest::keyClick(offered, Qt::Key_Down);
  QTest::keyClick(offered, Qt::Key_Down);
  QTest::keyClick(offered, Qt::Key_Enter);
  EXPECT_THAT(chosen, ElementsAre("London, England", "Los Angeles, California"));
}

TEST_F(EditorControlsTest, TypedTextAloneChoosesNoCity) {
  QComboBox* city = show_city();
  QTest::keyClick(type(city, "paris"), Qt::Key_Escape);
  QTest::keyClick(city->lineEdit(), Qt::Key_Return);
  QTest::keyClick(type(city, "Paris, France"), Qt::Key_Escape);
  QTest::keyClick(city->lineEdit(), Qt::Key_Tab);
  EXPECT_FALSE(type(city, "Atlantis"));
  QTest::keyClick(city->lineEdit(), Qt::Key_Return);
  EXPECT_THAT(chosen, IsEmpty());
  EXPECT_EQ(form.com_city.text.get(), "Atlantis");
}

TEST_F(EditorControlsTest, BoxesAreWideEnoughForTheirLongestEntryInAnyFont) {
  form.frm_event.visible = true;
  fill_sun_offsets(form);
  view->resize(view->minimumSize());
  const QFont usual = QApplication::font();
  const auto cut_off = [this] {
    std::vector<std::string> found;
    for (const char* name : {"Hour", "Minute", "Dim level"}) {
      const auto* box = named<QComboBox>(name);
      const QMargins margins = box->lineEdit()->textMargins();
      const int room = box->lineEdit()->width() - margins.left() - margins.right() - 4;
      for (int entry = 0; entry < box->count(); ++entry)
        if (box->fontMetrics().horizontalAdvance(box->itemText(entry)) > room)
          found.push_back(name + (" " + box->itemText(entry).toStdString()));
      if (!box->parentWidget()->rect().contains(box->geometry()))
        found.push_back(name + std::string(" lies beyond the edge"));
    }
    return found;
  };
  for (const double scale : {1.0, 1.15, 1.5, 2.0, 2.5}) {
    QFont font = usual;
    font.setPointSizeF(usual.pointSizeF() * scale);
    QApplication::setFont(font);
    const auto* hour = named<QComboBox>("Hour");
    ASSERT_TRUE(QTest::qWaitFor([&] { return hour->font().pointSizeF() == font.pointSizeF(); }));
    const bool all_fit = QTest::qWaitFor([&] { return cut_off().empty(); }, 2000);
    EXPECT_TRUE(all_fit) << ::testing::PrintToString(cut_off()) << " at " << scale;
  }
  QApplication::setFont(usual);
}

TEST_F(EditorControlsTest, AFlashingButtonMovesNothing) {
  form.frm_event.visible = true;
  for (const char* caption : {"Save", "Save this timed event & go on"}) {
    form.Command6.caption = caption;
    for (int turn = 0; turn < 3; ++turn) settle();
    const auto places = [this] {
      std::vector<QRect> found;
      for (auto* button : view->findChildren<QPushButton*>())
        if (button->isVisible()) found.push_back(button->geometry());
      return found;
    };
    const auto bold = places();
    ASSERT_GE(bold.size(), 2u);
    form.Command6.bold = false;
    settle();
    EXPECT_EQ(places(), bold) << caption;
    form.Command6.bold = true;
  }
}

TEST_F(EditorControlsTest, SunTimesTakeNoRoomBeforeThereAreAny) {
  show_city();
  const auto labels = shown<QLabel>().size();
  form.lab_sunset.caption = "Todays Sunrise time is:04:43";
  EXPECT_TRUE(shows("Todays Sunrise time is:04:43"));
  form.lab_sunset.caption = "";
  EXPECT_EQ(shown<QLabel>().size(), labels);
}

}  // namespace
}  // namespace homewarden::testing
