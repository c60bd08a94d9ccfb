// The tokens of programs on the panel of the web server.

#include <QClipboard>
#include <QScrollArea>

#include "tests/window/form_window.h"

namespace homewarden::testing {
namespace {

// Catches: a token that cannot be copied or stays in the field, a button that revokes another one.
TEST_F(FormWindow, ATokenIsMadeCopiedAndRevokedWithTheMouse) {
  std::vector<std::string> done;
  form.cmd_maketoken.click.connect([&] {
    done.push_back(form.txt_tokenname.text.get() + ": " + form.com_tokenright.text.get());
  });
  form.revoke_asked.connect([&](int place) { done.push_back("revoke " + std::to_string(place)); });
  open();
  form.Frame4.visible = true;
  const auto press = [&](const char* text) {
    QTest::qWait(0);
    for (auto* button : shown<QAbstractButton>())
      if (button->text() == text || button->accessibleName() == text) {
        view->findChild<QScrollArea*>()->ensureWidgetVisible(button);
        QTest::mouseClick(button, Qt::LeftButton);
        return true;
      }
    return false;
  };
  EXPECT_TRUE(shows("There are no tokens yet."));
  EXPECT_FALSE(named<QLineEdit>("New token"));
  auto* name = named<QLineEdit>("Name of the program");
  ASSERT_TRUE(name);
  QTest::keyClicks(name, "Dashboard");
  EXPECT_TRUE(press("May do everything"));
  EXPECT_TRUE(press("Make a token"));
  QTest::keyClick(name, Qt::Key_Return);

  form.show_new_token("hw_secret", "It is not shown again.");
  form.tokenfaces = {{2, "Dash & <b>board", "May only read", "Made today"},
                     {5, "Damaged token 5", "Lets nobody in", "", true}};
  auto* field = named<QLineEdit>("New token");
  ASSERT_TRUE(field);
  EXPECT_TRUE(shows("It is not shown again."));
  EXPECT_EQ(field->text(), "hw_secret");
  QTest::keyClicks(field, "x");
  EXPECT_EQ(field->text(), "hw_secret") << "typed into";
  EXPECT_TRUE(press("Copy token"));
  EXPECT_EQ(QApplication::clipboard()->text(), "hw_secret");
  EXPECT_TRUE(press("Revoke Dash & <b>board"));
  form.tokenfaces = {{5, "Damaged token 5", "Lets nobody in", "", true}};
  EXPECT_FALSE(press("Revoke Dash & <b>board"));
  EXPECT_TRUE(press("Revoke Damaged token 5"));
  form.show_new_token("", "");
  EXPECT_FALSE(named<QLineEdit>("New token"));
  EXPECT_EQ(field->text(), "");
  EXPECT_THAT(done, ElementsAre("Dashboard: May do everything", "Dashboard: May do everything",
                                "revoke 2", "revoke 5"));
}

}  // namespace
}  // namespace homewarden::testing
