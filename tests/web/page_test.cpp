// The pages byte by byte, and which request gets which.

#include <fstream>
#include <iterator>

#include "tests/web/web_house.h"

namespace homewarden::testing {
namespace {

std::string cell(const std::string& address, const std::string& picture, const std::string& name) {
  return "<font face=\"Verdana\" color=\"#FFFFFF\"><a href=\"index.html?" + address +
         "\"><img border=\"2\" src=" + picture +
         "></a><br><b><a target=\"_top\" href=\"index.html?" + address +
         "\"><font face=\"Verdana\" color=\"#FFFFFF\">" + name + "</font></a></b></font>";
}

const char* const kMenu =
    "<html><a target=\"_top\" href=\"index.html?loadroomKitchen\"><font "
    "color=\"#FFFFFF\">Kitchen</font></a>|<a target=\"_top\" "
    "href=\"index.html?loadroomLivingRoom\"><font color=\"#FFFFFF\">Living "
    "Room</font></a>|<ROOM3>|<room4>\r\n";

TEST(Pages, ARoomOfABrowserByteForByte) {
  WebHouse house;
  EXPECT_EQ(house.get("index.html", "loadroomLivingRoom"),
            std::string(kMenu) + "Living Room:" +
                cell("A~4~LivingRoomTableLamp~turnon~LivingRoom", "bulboff.gif", "Table Lamp") +
                "<dev1><dev2><DEV9></html>\r\n");
  house.set_machine("KitchenTableLamp", "True");
  EXPECT_EQ(house.get("x/index.html", "LOADROOMKitchen"),
            std::string(kMenu) + "Kitchen:" +
                cell("A~3~KitchenTableLamp~turnoff~Kitchen", "bulbon.gif", "Table Lamp") +
                cell("B~12~KitchenKettle~turnon~Kitchen", "switchoff.gif", "Kettle") +
                "<dev2><DEV9></html>\r\n");
  EXPECT_EQ(house.get("index.html"),
            std::string(kMenu) +
                "Please Select A Room From The List On The Left:&nbsp&nbsp&nbsp&nbsp</html>\r\n");
  EXPECT_EQ(house.get("index.html", "loadroomCellar"),
            std::string(kMenu) + ":<dev0><dev1><dev2><DEV9></html>\r\n");
  house.files.contents.erase(House::file("rmlst.hwd"));
  house.loop.advance(PageCache::kGlance);
  EXPECT_EQ(house.get("index.html", "loadroomKitchen"), WebHouse::kNormal);
  house.files.contents.erase(House::file("html/index.html"));
  house.loop.advance(PageCache::kGlance);
  EXPECT_EQ(house.get("index.html", "loadroomKitchen"), "");
}

TEST(Pages, APageBuiltBeforeIsNotShownOnceAnythingHasChanged) {
  WebHouse house;
  const auto kitchen = [&house] { return house.get("index.html", "loadroomKitchen"); };
  const auto edit = [&house](const char* file, const char* text) {
    house.content(file) += text;
    house.loop.advance(PageCache::kGlance);
  };
  const std::string first = kitchen();
  EXPECT_EQ(kitchen(), first);
  house.set_machine("KitchenTableLamp", "True");  // as the background service would
  EXPECT_THAT(kitchen(), HasSubstr("bulbon.gif"));
  house.settings.write("type", "KitchenTableLamp", "fan");
  EXPECT_THAT(kitchen(), HasSubstr("fanon.gif"));
  edit("rmlst.hwd", "Kitchen~New Lamp~C~1\r\n");
  EXPECT_THAT(kitchen(), HasSubstr("New Lamp"));
  edit("html/index.html", "<p>edited");
  EXPECT_THAT(kitchen(), EndsWith("<p>edited\r\n"));
  EXPECT_THAT(house.get("index.html"), HasSubstr("Please Select"));
  house.get("wmcindex.html", "loadroomKitchen");
  EXPECT_THAT(house.get("index.html"), HasSubstr("New Lamp")) << "another room was shown last";
  for (int i = 0; i < 200; ++i) house.get("index.html", "loadroom" + std::to_string(i));
  EXPECT_THAT(kitchen(), HasSubstr("New Lamp")) << "many other pages took its place";
}

TEST(Pages, ATenFootRoomWithItsFocus) {
  WebHouse house;
  const std::string home = house.get("");
  EXPECT_THAT(home, HasSubstr("Please Select A Room"));
  EXPECT_THAT(home, Not(HasSubstr("module1\""))) << "a device place without device takes the focus";
  const std::string first = house.get("wmcindex.html", "loadroomKitchen");
  EXPECT_THAT(first, HasSubstr("MCFocusStart=\"option1\""));
  EXPECT_THAT(first,
              HasSubstr("<a href=wmcindex.html?loadroomLivingRoom ID=\"option2\" class=\"button2\" "
                        "MCFocusable=\"true\"><a target=\"_top\" "
                        "href=\"wmcindex.html?loadroomLivingRoom\"><font color=\"#FFFFFF\" "
                        "face=\"Verdana\" size=\"6\">Living Room</font></a></a>"));
  EXPECT_THAT(first, HasSubstr("<a href=<url3>></a>")) << "the address place stays";
  EXPECT_THAT(first, HasSubstr("ID=\"module2\" class=\"imcl1\" MCFocusable=\"true\" "
                               "mrl=wmcindex.html?B~12~KitchenKettle~turnon~Kitchen~1><font"));
  EXPECT_THAT(first, HasSubstr("<font face=\"Verdana\" color=\"#FFFFFF\" size=\"6\">Kettle<"));
  EXPECT_THAT(first, EndsWith("<p mrl=<mrl10>>\r\n"));
  EXPECT_EQ(house.machine("lastroom"), "Kitchen");

  house.set_machine("lastdev", "2");
  EXPECT_THAT(house.get("wmcindex.html"), HasSubstr("MCFocusStart=\"module2\""));
  EXPECT_THAT(house.get("wmcindex.html", "loadroomLivingRoom"),
              HasSubstr("MCFocusStart=\"option1\""));
  EXPECT_THAT(house.get("index.html"), HasSubstr("Living Room:<font"))
      << "the browser's home page does not show the room last seen";
}

// Browsers send what is typed in UTF-8. A name of the code page that happens to be UTF-8 is not to
// lose its room to another.
TEST(Pages, ATypedAddressInUtf8FindsTheRoomAndTheDevice) {
  WebHouse house(
      "B\xfcro~~~\r\nT\xfcr~~~\r\n\xc3\xa9~~~\r\n\xe9~~~\r\nB\xfcro~L\xe4mp~A~3\r\n"
      "\xc3\xa9~Old~B~1\r\n\xe9~New~B~2\r\n");
  house.content("html/index.html") = house.content("html/wmcindex.html") = "[<room>]";
  const std::string rooms[][3] = {
      // what is asked for, the room shown, the room remembered
      {"B%C3%BCro", "B\xfcro", "B\xfcro"}, {"b\xc3\x9cRO", "B\xfcro", "b\xdcRO"},
      {"B%FCro", "B\xfcro", "B\xfcro"},    {"%C3%BCro", "B\xfcro", "\xfcro"},
      {"T%C3%BCr", "", "T\xfcr"},  // has no devices
      {"%C3%A9", "\xc3\xa9", "\xc3\xa9"},  {"%E9", "\xe9", "\xe9"},
      {"B%E2%98%83", "", "B\xe2\x98\x83"},
  };
  for (const auto& [query, shown, remembered] : rooms) {
    for (const char* page : {"index.html", "wmcindex.html"})
      EXPECT_EQ(house.get(page, "loadroom" + query), "[" + shown + "]\r\n") << query;
    EXPECT_EQ(house.machine("lastroom"), remembered) << query;
    EXPECT_EQ(house.get("index.html"), "[" + shown + "]\r\n") << query;
  }
  house.web.request("index.html", "A~3~B%C3%BCroL%C3%A4mp~turnon~B%C3%BCro");
  house.loop.advance(5s);
  EXPECT_EQ(house.machine("B\xfcroL\xe4mp"), "True");
  EXPECT_THAT(house.web.answers.back(), EndsWith(" [B\xfcro]\r\n"));
}

TEST(Pages, ARoomShowsTenOfItsDevicesAndNoneOfARoomThatContainsItsName) {
  std::string list = "Bedroom~~~\r\nno device line\r\nBed~Odd~A~x\r\n";
  for (int i = 1; i <= 12; ++i)
    list += (i > 1 ? "Bed~Lamp " : "Bedroom~Fan ") + std::to_string(i) + "~A~" + std::to_string(i) +
            "\r\n";
  WebHouse house(list);
  const std::string foot =
      "<footer role=\"status\"><p>2 lines of rmlst.hwd cannot be understood and are left out, the "
      "first of them line 2. The file keeps them.</p></footer>\r\n";
  house.content("html/index.html") = "<room>[<dev9>][<dev10>]</BODY>";
  EXPECT_EQ(house.get("index.html", "loadroombed"),
            "Bed[" + cell("A~11~BedLamp11~turnon~Bed", "switchoff.gif", "Lamp 11") + "][<dev10>]" +
                foot + "</BODY>\r\n");
  house.content("html/index.html") = "<room>[<dev1>]";
  EXPECT_EQ(house.get("index.html", "loadroomBedroom"), "Bedroom[<dev1>]\r\n" + foot);
  EXPECT_EQ(house.get("index.html", "loadroomdroom"), "Bedroom[<dev1>]\r\n" + foot)
      << "no such room";
  house.web.under_foreign_name = true;
  for (const char* page : {"index.html", "wmcindex.html"})
    EXPECT_THAT(house.get(page), Not(AnyOf(HasSubstr("<footer"), HasSubstr("Bedroom"))))
        << "strangers could read it";
}

// A template that lost a place would hide the rooms and devices of large houses only.
TEST(Pages, TheTemplatesHaveEveryPlaceThatIsFilled) {
  const auto expect_places = [](const std::string& page, const std::string& place, int first,
                                int last) {
    std::ifstream stream(HOMEWARDEN_SOURCES "/html/" + page, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    for (int i = first; i <= last; ++i)
      EXPECT_THAT(content, HasSubstr("<" + place + std::to_string(i) + ">")) << page;
  };
  expect_places("index.html", "room", 1, 32);
  expect_places("wmcindex.html", "room", 1, 19);
  expect_places("wmcindex.html", "url", 1, 19);
  expect_places("wmcindex.html", "mrl", 1, 10);
  for (const char* page : {"index.html", "wmcindex.html"}) expect_places(page, "dev", 0, 9);
}

// A page that was built before a notice came up, or went, would not show it.
TEST(Pages, ANoticeMakesEveryPageANewOne) {
  VirtualLoop loop;
  MemoryFiles files;
  MemoryRegistry registry;
  Notices notices;
  files.contents = {{"rmlst.hwd", ""}, {"html/index.html", ""}};
  PageCache cache(loop, files, registry, notices, "rmlst.hwd", "html");
  for (const char* notice : {"The disk is full.", ""}) {
    const auto before = cache.sources(PageFamily::kNormal);
    ASSERT_TRUE(before);
    cache.keep("home", *before, "page");
    ASSERT_THAT(cache.find("home", *before), NotNull());
    notices.tell("disk", notice);
    EXPECT_EQ(cache.find("home", *cache.sources(PageFamily::kNormal)), nullptr);
  }
}

// The queries of all links to the page that hold the word. No client changes any of their letters.
Texts links(const std::string& html, const std::string& page, const std::string& word) {
  const std::string start = "href=\"" + page + "?";
  Texts found;
  for (auto at = html.find(start); at != std::string::npos; at = html.find(start, at + 1)) {
    const auto begin = at + start.size();
    const std::string query = html.substr(begin, html.find('"', begin) - begin);
    EXPECT_THAT(query, ::testing::MatchesRegex("[A-Za-z0-9%._~!$()*,;=:@/?-]+"));
    if (query.find(word) != std::string::npos) found.push_back(query);
  }
  return found;
}

// A name that ends its link, is taken for an encoded one, or for a place to be filled, switches
// another device or none.
TEST(Pages, EveryLinkOfAnyNameLeadsToItsRoomAndSwitchesItsDevice) {
  const Texts names = {"\"A\" & B",
                       "50%41 #+?=/",
                       "Tom's \\ {x} |^`[;]",
                       "&lt;b&gt; &copy",
                       "<room1> <room> <dev1> <mrl1>",
                       " ID=\"option9\" class=\"button2\" MCFocusable=\"true\"",
                       "MCFocusStart=\"option1\"",
                       "Caf\xe9 \x80 \x81\xff \xc3\xa9",
                       "</a><script>",
                       "%7E%%"};
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i)
    list += names[i] + "~~~\r\n" + names[i] + "~" + names[names.size() - 1 - i] + "~A~" +
            std::to_string(i + 1) + "\r\n";
  for (const char* page : {"index.html", "wmcindex.html"}) {
    WebHouse house(list);
    std::string menu;
    for (std::size_t i = 1; i <= names.size(); ++i) menu += "<room" + std::to_string(i) + ">";
    house.content("html/index.html") = menu + "<room>|<dev0>|<dev1>";
    const Texts rooms = links(house.get(page), page, "loadroom");
    ASSERT_THAT(rooms, SizeIs(names.size())) << page;
    for (std::size_t i = 0; i < names.size(); ++i) {
      const Texts switches = links(house.get(page, rooms[i]), page, "~turnon~");
      ASSERT_THAT(switches, SizeIs(2)) << page << ": picture and name of " << names[i];
      house.line();
      house.get(page, switches[0]);
      house.loop.advance(5s);
      EXPECT_THAT(house.line(), ElementsAre(EndsWith(" A" + std::to_string(i + 1) + " 2")))
          << names[i];
      EXPECT_THAT(links(house.get(page, rooms[i]), page, "~turnoff~"), SizeIs(2))
          << "recorded for another device: " << names[i];
    }
  }
}

TEST(Grammar, TheFirstRuleThatFitsWins) {
  const auto rule = [](const char* page, const char* query) {
    const WebRequest request = classify_request(page, query);
    const char* const actions[] = {"home", "room", "on", "off", "file"};
    const std::string action = actions[static_cast<int>(request.action)];
    if (action == "file") return action;
    return action + (request.family == PageFamily::kMediaCenter ? " tv" : "");
  };
  EXPECT_EQ(rule("", ""), "home tv");
  EXPECT_EQ(rule("wmcindex.html", ""), "home tv");
  EXPECT_EQ(rule("index.html", ""), "home");
  EXPECT_EQ(rule("wmcindex.html", "loadroomX"), "room tv");
  EXPECT_EQ(rule("wmcindex.html", "A~3~K~TURNON~R~1"), "on tv");
  EXPECT_EQ(rule("index.html", "A~3~K~turnoff~R"), "off");
  EXPECT_EQ(rule("index.html", "A~3~turnoff~turnon~R"), "on") << "turnon is looked for first";
  EXPECT_EQ(rule("index.html", "loadroomturnonRoom"), "room");
  EXPECT_EQ(rule("wmcindex.html", "hello"), "file");
  EXPECT_EQ(rule("INDEX.HTML", ""), "file");
  EXPECT_EQ(rule("", "loadroomX"), "file");
  EXPECT_EQ(rule("bulbon.gif", ""), "file");
  EXPECT_EQ(room_of_query("loadroomLOADROOMKitchen"), "Kitchen");
  EXPECT_EQ(decode_query("loadroomB%FCro%20%zz%4"), "loadroomB\xFCro %zz%4");
}

TEST(Grammar, SwitchQueriesComeApart) {
  const auto normal = split_switch_query("A~3~KitchenLamp~turnon~Kitchen~2", PageFamily::kNormal);
  ASSERT_TRUE(normal);
  EXPECT_EQ(normal->room, "Kitchen~2") << "the last field is all that is left";
  EXPECT_EQ(normal->unit, 3);
  const auto tv = split_switch_query("A~3~KitchenLamp~turnon~Kitchen~4x", PageFamily::kMediaCenter);
  ASSERT_TRUE(tv);
  EXPECT_EQ(tv->room, "Kitchen");
  EXPECT_EQ(tv->position, 4);
  EXPECT_EQ(split_switch_query("A~3~K~turnon~R~1e99", PageFamily::kMediaCenter)->position, 1);
  // A line break in a house code would write a line of its own choice into the log.
  for (const char* query :
       {"turnon", "A~3~K~turnon", "A~x~K~turnon~R", "\nOn the power line: A~3~K~turnon~R"})
    EXPECT_FALSE(split_switch_query(query, PageFamily::kNormal)) << query;
  EXPECT_FALSE(split_switch_query("A~3~K~turnon~R", PageFamily::kMediaCenter));
}

}  // namespace
}  // namespace homewarden::testing
