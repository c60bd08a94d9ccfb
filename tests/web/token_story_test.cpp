// Tokens of programs: made and revoked on the panel, told to the web server.

#include "tests/web/web_house.h"

namespace homewarden::testing {
namespace {

struct TokenHouse : WebHouse {
  void make(const std::string& name, const char* right = kTokenReads) {
    form().txt_tokenname.text = name;
    form().com_tokenright.text = right;
    click(form().cmd_maketoken);
  }
  void revoke(int place) {
    form().revoke_asked(place);
    loop.advance(0ms);
  }
  Texts tokens() {
    Texts texts;
    for (const ApiToken& token : web.tokens)
      texts.push_back(token.name + (token.may_change ? " full " : " read ") + token.hash.back());
    return texts;
  }
  Texts faces() {
    Texts texts;
    for (const TokenFace& face : form().tokenfaces.get())
      texts.push_back(face.name + ": " + face.right + ". " + face.dates);
    return texts;
  }
  // As another program does, which the registry tells of or the next second finds.
  void store(const std::string& key, const std::string& text) {
    settings.write("webtokens", key, text);
    loop.advance(2s);
  }
  static std::string hash(char last) { return std::string(63, 'a') + last; }
};

// A secret that stays on the screen, or is kept where a thief of the disk finds it.
TEST(TokenStory, ATokenIsShownOnceAndOnlyItsHashIsKept) {
  TokenHouse house;
  house.loop.set_wall_clock(2023, 6, 21, 14, 5);
  FrmMain& form = house.form();
  form.Frame4.visible = true;
  EXPECT_FALSE(form.txt_newtoken.visible);
  house.make(
      " K\xFC"
      "che ",
      kTokenDoes);
  EXPECT_EQ(form.txt_newtoken.text.get(), "hw_secret1");
  EXPECT_TRUE(form.txt_newtoken.visible && form.cmd_copytoken.visible);
  EXPECT_THAT(form.lab_newtoken.caption.get(), HasSubstr("\"K\xFC"
                                                         "che\". It is shown now and not"));
  EXPECT_EQ(form.txt_tokenname.text.get(), "");
  EXPECT_EQ(form.com_tokenright.text.get(), kTokenReads) << "the next one is full by neglect";
  EXPECT_THAT(house.tokens(), ElementsAre("K\xC3\xBC"
                                          "che full 1"));
  EXPECT_THAT(house.settings.read("webtokens", "1", ""),
              ::testing::MatchesRegex("full 2023-06-21 14:05 0*1 K\xFC"
                                      "che"));
  form.Frame4.visible = false;
  EXPECT_EQ(form.txt_newtoken.text.get(), "");
  EXPECT_FALSE(form.lab_newtoken.visible);

  house.registry.may_change = [] { return false; };
  house.make("Dashboard");
  EXPECT_THAT(form.lab_newtoken.caption.get(), HasSubstr("in memory only"));
  house.registry.may_change = nullptr;
  house.forget_program();
  house.web.tokens.clear();
  house.open_connected();
  EXPECT_THAT(house.tokens(), ElementsAre("K\xC3\xBC"
                                          "che full 1",
                                          "Dashboard read 2"))
      << "forgotten by a restart";
}

TEST(TokenStory, ANameIsRefusedWithASentence) {
  TokenHouse house;
  house.make("Dashboard");
  const auto refusal = [&house](const std::string& name) {
    const std::size_t before = house.dialogs.messages.size();
    house.make(name);
    return house.dialogs.messages.size() == before ? "made" : house.dialogs.messages.back();
  };
  EXPECT_THAT(refusal("  "), HasSubstr("give the token a name"));
  EXPECT_THAT(refusal(" dashBOARD"), HasSubstr("a token with the name \"dashBOARD\" already"));
  EXPECT_THAT(refusal("a\nb"), HasSubstr("Western European"));
  EXPECT_THAT(refusal("\x1A"), HasSubstr("Western European")) << "what the code page does not have";
  EXPECT_THAT(refusal(std::string(41, 'x')), HasSubstr("40 letters"));
  EXPECT_THAT(house.tokens(), SizeIs(1));
  house.registry.is_read = false;
  EXPECT_THAT(refusal("Another"), HasSubstr("cannot be read")) << "it would overwrite the first";
  house.loop.advance(2s);
  EXPECT_THAT(house.tokens(), SizeIs(1)) << "a disk that hangs takes everybody's tokens";
  house.registry.is_read = true;
  for (int i = 1; i < TokenStore::kMost; ++i) EXPECT_EQ(refusal("t" + std::to_string(i)), "made");
  EXPECT_THAT(refusal("one more"), HasSubstr("no more"));
}

TEST(TokenStory, ARevokedTokenCountsNoMoreFromThatMoment) {
  TokenHouse house;
  FrmMain& form = house.form();
  house.make("Dashboard");
  house.make("Script", kTokenDoes);
  house.dialogs.says_yes = false;
  house.revoke(2);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("really want to revoke \"Script\""));
  EXPECT_THAT(house.tokens(), SizeIs(2));
  house.dialogs.says_yes = true;
  house.revoke(2);
  EXPECT_THAT(house.tokens(), ElementsAre("Dashboard read 1"));
  EXPECT_EQ(form.txt_newtoken.text.get(), "") << "a secret that is worth nothing is offered";
  house.make("Script");
  EXPECT_THAT(house.faces(), SizeIs(2));
  EXPECT_EQ(form.tokenfaces.get()[1].place, 2) << "places are used up";
}

// A token nobody uses any more cannot be told from one that is used; or each request costs a write.
TEST(TokenStory, TheDayOfTheLastUseIsNotedOnceADay) {
  TokenHouse house;
  house.loop.set_wall_clock(2023, 6, 21, 23, 59);
  house.make(
      "K\xFC"
      "che");
  EXPECT_THAT(house.faces(), ElementsAre("K\xFC"
                                         "che: May only read. Made on 2023-06-21, not used yet"));
  ApiRequest request{"GET", "/house"};
  request.token =
      "K\xC3\xBC"
      "che";
  house.web.api(request);
  const auto changes = house.registry.changes(RegistryRoot::kCurrentUser);
  house.web.api(request);
  request.token = "";
  house.web.api(request);
  EXPECT_EQ(house.registry.changes(RegistryRoot::kCurrentUser), changes);
  EXPECT_THAT(house.faces(), ElementsAre(EndsWith("last used on 2023-06-21")));
  house.loop.advance(2min);
  request.token =
      "K\xC3\xBC"
      "che";
  house.web.api(request);
  EXPECT_THAT(house.faces(), ElementsAre(EndsWith("last used on 2023-06-22")));
}

// One bad entry takes all tokens with it, or lets somebody in with more than was meant.
TEST(TokenStory, WhatOtherProgramsStoreIsTakenUpAndADamagedEntryCostsOnlyItself) {
  TokenHouse house;
  const std::string made = " 2023-06-21 14:05 ";
  house.store("1", "read" + made + TokenHouse::hash('1') + " Dashboard");
  EXPECT_THAT(house.tokens(), ElementsAre("Dashboard read 1"));
  house.settings.write("webtokens", "2", "full" + made + TokenHouse::hash('2') + " Script");
  house.registry.changed(RegistryRoot::kCurrentUser);
  EXPECT_THAT(house.tokens(), SizeIs(2)) << "told, and not taken up";
  EXPECT_EQ(house.form().lab_notice.caption.get(), "");

  int place = 3;
  for (const std::string& damaged :
       {std::string("x"), "FULL" + made + TokenHouse::hash('3') + " a",
        "full 2023-02-30 14:05 " + TokenHouse::hash('4') + " b", "full" + made + "short c",
        "full" + made + TokenHouse::hash('z') + " d", "full" + made + TokenHouse::hash('5') + " ",
        "full" + made + TokenHouse::hash('6') + " SCRIPT",
        "full" + made + TokenHouse::hash('1') + " same hash", std::string(40, ' ')})
    house.store(std::to_string(place++), damaged);
  EXPECT_THAT(house.tokens(), ElementsAre("Dashboard read 1", "Script full 2"));
  EXPECT_THAT(house.form().lab_notice.caption.get(), HasSubstr("Damaged token 9 (SCRIPT)"));
  EXPECT_THAT(house.faces()[2], StartsWith("Damaged token 3: Lets nobody in"));
  for (int revoked = 3; revoked < place; ++revoked) house.revoke(revoked);
  EXPECT_THAT(house.form().lab_notice.caption.get(), Not(HasSubstr("Damaged")));
  EXPECT_THAT(house.faces(), SizeIs(2));
}

}  // namespace
}  // namespace homewarden::testing
