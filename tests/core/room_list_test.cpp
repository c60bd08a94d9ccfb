// The room and device list as people and accidents leave it.

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

Texts tree_lines(FrmMain& form) {
  Texts lines;
  for (std::size_t i = 5; i < form.Tree.roots().size(); ++i) {
    lines.push_back(form.Tree.roots()[i]->text);
    for (const auto& child : form.Tree.roots()[i]->children) lines.push_back("- " + child->key);
  }
  return lines;
}

FrmMain& started(House& house) {
  house.open(0s);
  return house.form();
}

TEST(RoomList, SortsRoomsTogetherAndBuildsTheTree) {
  House house(
      "Lounge~~~\r\nLounge~Fan~B~2\r\n\r\nKitchen~~~\r\nKitchen~Lamp~A~1\r\nKitchen Two~~~\r\n"
      "kitchen2~Lamp~A~5\r\nOrphan~Lamp~A~9\r\n");
  FrmMain& form = started(house);
  EXPECT_THAT(form.lst_rooms.items.get(),
              ElementsAre("", "Kitchen Two~~~", "Kitchen~~~", "Kitchen~Lamp~A~1",
                          "kitchen2~Lamp~A~5", "Lounge~~~", "Lounge~Fan~B~2", "Orphan~Lamp~A~9"));
  EXPECT_THAT(tree_lines(form),
              ElementsAre("Kitchen Two", "Kitchen", "- Lamp~A~1", "kitchen2", "- Lamp~A~5",
                          "Lounge", "- Fan~B~2", "Orphan", "- Lamp~A~9"));
  EXPECT_FALSE(form.lab_notice.visible);
}

TEST(RoomList, DevicesOfOneNameAndAddressAllHaveNodes) {
  House house("Hall~Lamp~A~1\r\nHome~Bell~A~2\r\nPorch~Lamp~A~1\r\nPorch~Light~A~3\r\n");
  FrmMain& form = started(house);
  EXPECT_THAT(tree_lines(form),
              ElementsAre("Hall", "- Lamp~A~1", "Porch", "- Porch~Lamp~A~1", "- Light~A~3"));
  ASSERT_EQ(form.Tree.find("Home")->children.size(), 1u)
      << "a room named as a fixed node shares it";
  EXPECT_THAT(form.lst_codes.items.get(), ElementsAre("A~1", "A~2", "A~1", "A~3"));
  EXPECT_THAT(form.lst_temproom.items.get(), ElementsAre("Hall", "Porch"));
}

TEST(RoomList, BadLinesCostThemselvesAndAreNamed) {
  const std::string monster(1 << 20, 'x');
  House house("Hall~Lamp~A~1\nno tilde\nHall~Half~A\r\nHall~Word~A~one\r\n" + monster +
              "~y~A~1\r\n" + std::string("Bin\0ary~\x01~A~1\r\n", 15) + "Den~Odd~Z~99\rPorch~~~");
  FrmMain& form = started(house);
  EXPECT_THAT(tree_lines(form), ElementsAre("Den", "- Odd~Z~99", "Hall", "- Lamp~A~1", "Porch"));
  EXPECT_TRUE(form.lab_notice.visible);
  EXPECT_THAT(form.lab_notice.caption.get(), HasSubstr("5 lines of rmlst.hwd"));
  EXPECT_THAT(form.lab_notice.caption.get(), HasSubstr("line 2"));
  EXPECT_EQ(form.lst_rooms.items.get().size(), 8u) << "a line was lost from the list in memory";
}

TEST(RoomList, AFileThatCannotBeReadIsNamedAndLetGo) {
  House unreadable;
  unreadable.files.unreadable.insert(House::file("rmlst.hwd"));
  EXPECT_THAT(tree_lines(started(unreadable)), IsEmpty());
  EXPECT_THAT(unreadable.form().lab_notice.caption.get(), HasSubstr("cannot be read"));
  EXPECT_FALSE(unreadable.form().filebusy) << "every later file operation would wait for ever";
}

TEST(RoomList, WaitsInStepsOfTwoSecondsWhileTheFilesAreInUse) {
  House house;
  house.open();
  house.form().filebusy = true;
  house.loop.advance(3900ms);
  EXPECT_TRUE(house.form().lst_rooms.items.get().empty());
  house.form().filebusy = false;
  house.loop.advance(100ms);
  EXPECT_FALSE(house.form().lst_rooms.items.get().empty());
}

TEST(RoomList, OrderOfSortedLists) {
  const Texts in_order = {" x", "~x", "1", "10", "a", "A b", "a1", "ab", "eb", "\xC9t", "f"};
  for (std::size_t i = 0; i < in_order.size(); ++i)
    for (std::size_t j = 0; j < in_order.size(); ++j)
      EXPECT_EQ(sorts_before(in_order[i], in_order[j]), i < j) << in_order[i] << '|' << in_order[j];
  EXPECT_FALSE(sorts_before("KITCHEN", "kitchen") || sorts_before("kitchen", "KITCHEN"));
}

}  // namespace
}  // namespace homewarden::testing
