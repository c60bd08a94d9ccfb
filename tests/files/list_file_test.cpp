// Lists that others change too, on a real disk.

#include "core/list_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "platform/linux/posix_files.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {
namespace {

struct ListFileOnDisk : ::testing::Test {
  ScratchFolder folder;
  os_linux::PosixFiles files;
  const std::filesystem::path path = folder / "list";
  ListFile list{files, path, folder / "scratch"};

  static bool none(std::string_view) { return false; }
};

// A script that adds lines all the time, each with an open of its own.
TEST_F(ListFileOnDisk, TwoWhoAddLinesAtOnceLoseNone) {
  constexpr int kLines = 100;
  ASSERT_TRUE(list.add("first"));
  const pid_t script = fork();
  if (script == 0) {
    for (int i = 0; i < kLines; ++i) {
      const int file = ::open(path.c_str(), O_WRONLY | O_APPEND);
      const bool written = ::write(file, "script\r\n", 8) == 8;
      ::close(file);
      if (!written) _exit(1);
      ::usleep(500);
    }
    _exit(0);
  }
  for (int i = 0; i < kLines; ++i)
    for (int attempt = 0; attempt < 1000 && !list.add("program"); ++attempt) ::usleep(100);
  int status = 1;
  ::waitpid(script, &status, 0);
  EXPECT_EQ(status, 0);
  const std::string content = list.content().value_or("");
  EXPECT_EQ(content.size(), std::string("first\r\n").size() + kLines * (8u + 9u)) << content;
  EXPECT_FALSE(files.exists(folder / "scratch"));
}

// "sort list > list" empties it first; what is written into a file that was replaced is lost.
TEST_F(ListFileOnDisk, WhatSomebodyIsWritingIsNotReplaced) {
  ASSERT_TRUE(list.add("one"));
  ASSERT_TRUE(list.write_scratch(none, "two"));
  {
    std::ofstream slow(path, std::ios::trunc);
    EXPECT_FALSE(list.use_scratch());
    slow << "three\n";
  }
  EXPECT_TRUE(list.use_scratch());
  EXPECT_EQ(files.read(path), "three\r\ntwo\r\n");
  std::filesystem::remove(path);
  ASSERT_TRUE(list.write_scratch(none, "four"));
  std::ofstream(path) << "five\n";
  EXPECT_TRUE(list.use_scratch());
  EXPECT_EQ(files.read(path), "five\r\nfour\r\n") << "a list made meanwhile";
}

// On the same disk and on another one.
TEST_F(ListFileOnDisk, AListThatIsALinkStaysOne) {
  ScratchFolder same;
  const std::filesystem::path memory = "/dev/shm/homewarden-link-" + std::to_string(::getpid());
  for (const auto& target : {same / "target", memory}) {
    std::ofstream(target) << "one\n";
    std::filesystem::remove(path);
    std::filesystem::create_symlink(target, path);
    EXPECT_TRUE(list.add("two")) << target;
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(files.read(target), "one\r\ntwo\r\n");
    std::filesystem::remove(target);
  }
}

}  // namespace
}  // namespace homewarden::testing
