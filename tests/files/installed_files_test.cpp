// What an upgrade of the program does to the pages of a house.

#include "platform/linux/installed_files.h"

#include <gtest/gtest.h>

#include <fstream>

#include "platform/linux/posix_files.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {
namespace {

namespace fs = std::filesystem;

class InstalledFiles : public ::testing::Test {
 protected:
  InstalledFiles() {
    fs::create_directories(scratch / "share/html");
    for (const char* name : {"index.html", "page.js", "page.css", "lamp.gif"}) install(name, "one");
    std::ofstream(scratch / "share/click.wav") << "one";
  }

  void install(const std::string& name, const char* text) {
    std::ofstream(scratch / ("share/html/" + name)) << text;
  }
  void start() { os_linux::bring_installed_files(scratch / "share", scratch / "house"); }
  fs::path page(const std::string& name) { return scratch / ("house/html/" + name); }
  std::string read(const std::string& name) {
    return os_linux::PosixFiles().read(page(name)).value_or("(none)");
  }

  ScratchFolder scratch;
};

TEST_F(InstalledFiles, AnUpgradeReplacesWhatIsAsItWasAndKeepsWhatThePersonChanged) {
  start();
  EXPECT_TRUE(fs::exists(scratch / "house/click.wav"));
  std::ofstream(page("index.html")) << "mine";
  fs::rename(page("page.js"), page("PAGE.JS"));
  fs::remove(page("page.css"));
  fs::rename(page("lamp.gif"), scratch / "lamp of a friend");
  fs::create_symlink(scratch / "lamp of a friend", page("lamp.gif"));
  for (const char* name : {"index.html", "page.js", "page.css", "lamp.gif", "new.gif"})
    install(name, "two");
  start();
  EXPECT_EQ(read("index.html"), "mine");
  EXPECT_EQ(read("PAGE.JS"), "two") << "a page that nobody changed is as old as the first start";
  EXPECT_FALSE(fs::exists(page("page.js")));
  EXPECT_EQ(read("page.css"), "two");
  EXPECT_EQ(read("new.gif"), "two");
  EXPECT_EQ(read("lamp.gif"), "one") << "written through a link into somebody's file";

  start();
  EXPECT_EQ(read("index.html"), "mine") << "the second start after an upgrade took it";
  std::ofstream(page("index.html")) << "one";
  start();
  EXPECT_EQ(read("index.html"), "two") << "what is as installed once more stays behind for ever";
}

TEST_F(InstalledFiles, AHouseFromBeforeTheRecordLosesNothing) {
  fs::create_directories(scratch / "house/html");
  std::ofstream(page("index.html")) << "mine";
  std::ofstream(page("page.js")) << "one";
  std::ofstream(scratch / "house/installed.sums") << "\n\x01 damaged\nhtml/index.html";
  start();
  for (const char* name : {"index.html", "page.js"}) install(name, "two");
  start();
  EXPECT_EQ(read("index.html"), "mine");
  EXPECT_EQ(read("page.js"), "two");
}

}  // namespace
}  // namespace homewarden::testing
