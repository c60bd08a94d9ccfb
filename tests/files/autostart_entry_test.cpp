// The entry as a desktop reads it.

#include "platform/linux/autostart_entry.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {
namespace {

namespace fs = std::filesystem;

// Everything that means something in a desktop entry, in its command line, or to a shell.
const std::string kOddName = " it's \"my\" $HOME `id` \\s home; & 1>2";

struct AutostartEntryTest : ::testing::Test {
  std::string read(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static bool succeeds(const std::string& command) { return std::system(command.c_str()) == 0; }

  ScratchFolder scratch;
  fs::path file = scratch / "autostart/homewarden.desktop";
};

// Catches: a name that a desktop reads otherwise than it was written.
TEST_F(AutostartEntryTest, IsValidAndStartsTheProgramOnItsHouse) {
  if (!succeeds("command -v desktop-file-validate && command -v gio"))
    GTEST_SKIP() << "neither desktop-file-validate nor gio";
  const fs::path folder = scratch / kOddName;
  const fs::path program = folder / "homewarden";
  fs::create_directories(folder);
  std::ofstream(program) << "#!/bin/sh\nprintf '%s|' \"$@\" \"$HOUSE\" >\"${0%/*}/begun\"\n"
                            "mv \"${0%/*}/begun\" \"${0%/*}/started\"\n";
  fs::permissions(program, fs::perms::owner_all);
  os_linux::AutostartEntry entry(file.parent_path(), program, {"--folder", "100%f" + kOddName},
                                 {"HOUSE=" + kOddName});
  ASSERT_TRUE(entry.fill());
  EXPECT_TRUE(succeeds("desktop-file-validate " + file.string()));
  EXPECT_TRUE(succeeds("env -u DBUS_SESSION_BUS_ADDRESS HOME=" + scratch.path().string() +
                       " XDG_RUNTIME_DIR=" + scratch.path().string() + " gio launch " +
                       file.string()));
  for (int i = 0; i < 600 && !fs::exists(folder / "started"); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(read(folder / "started"), "--folder|100%f" + kOddName + "|" + kOddName + "|");
}

TEST_F(AutostartEntryTest, IsEmptiedReplacedWholeAndLeftWhenSwitchedOff) {
  os_linux::AutostartEntry entry(file.parent_path(), "/usr/bin/homewarden", {}, {});
  EXPECT_FALSE(entry.is_switched_off());
  ASSERT_TRUE(entry.fill());
  const std::string filled = read(file);
  EXPECT_FALSE(entry.is_switched_off());
  std::ofstream(file, std::ios::app) << "Hidden=true\n";  // as the desktop's own settings do
  EXPECT_TRUE(entry.is_switched_off());
  ASSERT_TRUE(entry.fill());
  EXPECT_EQ(read(file), filled);
  ASSERT_TRUE(entry.clear());
  EXPECT_TRUE(fs::exists(file)) << "an entry for all users comes to light";
  EXPECT_EQ(fs::file_size(file), 0u);

  std::ofstream(scratch / "no folder") << "";
  os_linux::AutostartEntry nowhere(scratch / "no folder", "/usr/bin/homewarden", {}, {});
  EXPECT_FALSE(nowhere.fill());
  EXPECT_FALSE(nowhere.is_switched_off());
}

}  // namespace
}  // namespace homewarden::testing
