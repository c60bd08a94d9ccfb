// Files, folders and the lock, on a real disk.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/linux/folders.h"
#include "platform/linux/lock_file_instance.h"
#include "platform/linux/port_permissions.h"
#include "platform/linux/posix_files.h"
#include "platform/linux/window_call_pipe.h"
#include "tests/platform/as_nobody.h"
#include "tests/platform/memory_files.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {

using namespace os_linux;

namespace {

struct OnDisk {
  ScratchFolder folder;
  PosixFiles files;
  std::filesystem::path path(const char* name) { return folder / name; }
};
struct InMemory {
  MemoryFiles files;
  std::filesystem::path path(const char* name) { return name; }
};

template <class Kind>
struct FilesContract : ::testing::Test {
  Kind kind;
};
using Kinds = ::testing::Types<OnDisk, InMemory>;
TYPED_TEST_SUITE(FilesContract, Kinds);

// Catches: a profile from a system that writes "HOLIDAY.TXT", which a new name would pass over.
TYPED_TEST(FilesContract, FilesAreListedByTheEndingOfTheirNames) {
  Files& files = this->kind.files;
  for (const char* name : {"Work.txt", "HOLIDAY.TXT", "evelst.hwd"})
    EXPECT_TRUE(files.write(this->kind.path(name), "x"));
  const auto names = files.names_ending(this->kind.path("Work.txt").parent_path(), ".txt");
  ASSERT_TRUE(names);
  EXPECT_EQ(*names, (std::vector<std::string>{"HOLIDAY.TXT", "Work.txt"}));
}

// Catches: one link that leads nowhere, which hides all the others.
TEST(PosixFiles, ALinkThatLeadsNowhereIsNoFileOfTheFolder) {
  ScratchFolder folder;
  PosixFiles files;
  std::filesystem::create_symlink("gone", folder / "a.txt");
  std::filesystem::create_directory(folder / "b.txt");
  EXPECT_TRUE(files.write(folder / "c.txt", "x"));
  EXPECT_EQ(files.names_ending((folder / "c.txt").parent_path(), ".txt"),
            std::vector<std::string>{"c.txt"});
}

TEST(PosixFiles, NobodyElseMayReadASecretAlsoWhereAnOpenFileWas) {
  ScratchFolder folder;
  PosixFiles files;
  const auto secret = folder / "secret";
  EXPECT_TRUE(files.write(secret, "a long text that everybody may read"));
  EXPECT_TRUE(files.write_secret(secret, "user:pass"));
  struct stat info {};
  ASSERT_EQ(::stat(secret.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0600U);
  EXPECT_EQ(files.read(secret), "user:pass");
}

TEST(PosixFiles, AStampChangesWithTheContentAndIsWithheldWhileChangesFollowFast) {
  ScratchFolder folder;
  PosixFiles files;
  const auto page = folder / "page";
  EXPECT_FALSE(files.stamp(page));
  EXPECT_FALSE(files.stamp(folder.path())) << "a folder has no content";
  const auto settled = [&] {
    EXPECT_FALSE(files.stamp(page)) << "a second change would not show";
    for (int i = 0; i < 100 && !files.stamp(page); ++i) ::usleep(10'000);
    return files.stamp(page);
  };
  files.write(page, "one");
  const auto first = settled();
  ASSERT_TRUE(first);
  EXPECT_EQ(files.stamp(page), first);
  files.write(page, "two");
  // Whoever sets the time of a file back cannot make the new content pass for the old.
  std::filesystem::last_write_time(page, std::filesystem::file_time_type::min());
  EXPECT_NE(settled(), first);
}

TYPED_TEST(FilesContract, WritesAppendsRenamesAndRemoves) {
  Files& files = this->kind.files;
  const auto list = this->kind.path("list");
  const auto other = this->kind.path("other");
  EXPECT_FALSE(files.exists(list));
  EXPECT_FALSE(files.read(list));
  EXPECT_TRUE(files.remove(list)) << "nothing to remove is no failure";
  EXPECT_TRUE(files.append(list, "one\r\n"));
  EXPECT_TRUE(files.append(list, std::string("\0two", 4)));
  EXPECT_EQ(files.read(list), std::string("one\r\n\0two", 9));
  EXPECT_TRUE(files.write(list, "short"));
  EXPECT_EQ(files.read(list), "short");
  EXPECT_TRUE(files.write(other, "old"));
  EXPECT_TRUE(files.rename(list, other));
  EXPECT_EQ(files.read(other), "short");
  EXPECT_FALSE(files.exists(list));
  EXPECT_FALSE(files.rename(list, other));
  EXPECT_NE(files.exchange(list, other, "short"), Exchange::kDone);
  EXPECT_EQ(files.read(other), "short");
  EXPECT_TRUE(files.write(list, "new"));
  EXPECT_EQ(files.exchange(list, other, "shor"), Exchange::kChanged);
  EXPECT_EQ(files.exchange(list, other, "short"), Exchange::kDone);
  EXPECT_EQ(files.read(list), "short");
  EXPECT_EQ(files.read(other), "new");
  EXPECT_TRUE(files.remove(list));
  EXPECT_TRUE(files.remove(other));
  EXPECT_FALSE(files.exists(other));
}

// A folder that was copied from a system without letter case.
TYPED_TEST(FilesContract, FindsAFileInOtherLetterCaseAndLeavesItsName) {
  Files& files = this->kind.files;
  const auto upper = this->kind.path("RMLST.HWD");
  const auto lower = this->kind.path("rmlst.hwd");
  const auto scratch = this->kind.path("tc.tmp");
  files.write(upper, "one");
  EXPECT_TRUE(files.exists(lower));
  EXPECT_EQ(files.read(lower), "one");
  EXPECT_TRUE(files.append(lower, "two"));
  EXPECT_EQ(files.read(upper), "onetwo") << "a second file was made beside it";
  files.write(scratch, "three");
  EXPECT_TRUE(files.rename(scratch, lower));
  EXPECT_EQ(files.read(upper), "three");
  EXPECT_TRUE(files.remove(lower));
  EXPECT_FALSE(files.exists(upper));
}

TEST(PosixFiles, TheExactNameGoesBeforeAnother) {
  ScratchFolder folder;
  PosixFiles files;
  std::ofstream(folder / "MACS.HLK") << "other";
  EXPECT_EQ(files.read(folder / "macs.hlk"), "other");
  std::ofstream(folder / "macs.hlk") << "exact";
  EXPECT_EQ(files.read(folder / "macs.hlk"), "exact") << "the name found first is kept for ever";
  EXPECT_TRUE(files.remove(folder / "macs.hlk"));
  EXPECT_EQ(files.read(folder / "macs.hlk"), "other");
}

TEST(PosixFiles, ALinkThatLeadsNowhereIsThere) {
  ScratchFolder folder;
  std::filesystem::create_symlink(folder / "missing", folder / "HTACCESS.TXT");
  PosixFiles files;
  EXPECT_TRUE(files.exists(folder / "htaccess.txt"));
  EXPECT_FALSE(files.read(folder / "htaccess.txt"));
}

TEST(PosixFiles, WhatIsNoFileIsNotReadAndHoldsNobodyUp) {
  ScratchFolder folder;
  PosixFiles files;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(files.read(folder / "pipe"));
  EXPECT_FALSE(files.write(folder / "pipe", "x"));
  EXPECT_FALSE(files.append(folder / "pipe", "x"));
  EXPECT_FALSE(files.read(folder.path()));
  EXPECT_FALSE(files.write(folder / "missing/file", "x"));
  EXPECT_FALSE(files.append(folder.path(), "x"));
}

TEST(PosixFiles, AnAppendThatTheDiskCutsShortLeavesWhatWasThere) {
  ScratchFolder folder;
  PosixFiles files;
  ASSERT_TRUE(files.write(folder / "list", "one\r\n"));
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const struct rlimit ten_bytes = {10, 10};
    const bool limited = setrlimit(RLIMIT_FSIZE, &ten_bytes) == 0;
    _exit(limited && !files.append(folder / "list", "a long second line\r\n") ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0) << "the append was reported as done";
  EXPECT_EQ(files.read(folder / "list"), "one\r\n");
}

TEST(WindowCallPipe, CallsReachWhoeverListensAndNothingElse) {
  ScratchFolder folder;
  std::function<void()> readable;
  const auto watch = [&readable](int, std::function<void()> function) { readable = function; };
  const auto file = folder / "window.call";
  std::ofstream(file) << "kept";
  WindowCallPipe caller(folder.path(), watch);
  EXPECT_FALSE(caller.ask()) << "wrote into a file";
  std::filesystem::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(caller.ask()) << "a killed copy's pipe answered, or the call waited for ever";
  WindowCallPipe listener(folder.path(), watch);
  int shown = 0;
  listener.listen([&shown] { ++shown; });
  EXPECT_TRUE(caller.ask() && caller.ask());
  readable();
  EXPECT_EQ(shown, 1);
  listener.stop_listening();
  EXPECT_FALSE(caller.ask());
}

TEST(LockFileInstance, AskingTakesNothingAndACopyOfAnotherPersonIsFound) {
  const AsNobody nobody;
  ScratchFolder folder;
  LockFileInstance first(folder / kWindowLock);
  LockFileInstance second(folder / kWindowLock);
  EXPECT_FALSE(second.another_is_running());
  ASSERT_TRUE(first.take()) << "who asked counts as the running one";
  EXPECT_TRUE(first.take());
  EXPECT_FALSE(first.another_is_running()) << "it found itself";
  std::filesystem::permissions(folder / kWindowLock, std::filesystem::perms::owner_read);
  EXPECT_TRUE(second.another_is_running());
  EXPECT_FALSE(second.take());
  EXPECT_TRUE(LockFileInstance(folder / kServiceLock).take());
  first.give_back();
  EXPECT_TRUE(second.take());
  EXPECT_FALSE(first.take()) << "a lock on a file that can only be read keeps nobody out";
}

TEST(PortPermissions, TellWhichPortIsForbiddenAndWhichGroupHelps) {
  ScratchFolder folder;
  std::filesystem::create_directories(folder / "ports");
  const auto make = [&folder](const char* name, mode_t mode) {
    std::ofstream(folder / name) << "";
    // Root has groups of others to give; everybody else has only the own one.
    constexpr gid_t kDialout = 20;
    const gid_t group = geteuid() == 0 ? kDialout : getegid();
    ASSERT_EQ(chown((folder / name).c_str(), geteuid(), group), 0);
    ASSERT_EQ(chmod((folder / name).c_str(), mode), 0);
  };
  make("ports/com1", 0666);
  make("ports/com2", 0);
  make("ports/com3", 0060);
  chmod(folder.path().c_str(), 0755);
  const AsNobody nobody;
  const std::string text = refused_ports(PortNames(folder.path(), PortNames::Devices::kLinksOnly));
  EXPECT_EQ(text.find("com1"), std::string::npos);
  EXPECT_NE(text.find("ports/com2; its permissions forbid it."), std::string::npos) << text;
  EXPECT_NE(text.find("ports/com3, which belongs to the group "), std::string::npos) << text;
}

TEST(Folders, EnvironmentAndOptionDecide) {
  ScratchFolder folder;
  setenv("HOMEWARDEN_MACHINE_DIR", (folder / "m").c_str(), 1);
  setenv("HOMEWARDEN_USER_DIR", (folder / "u").c_str(), 1);
  const Folders told = find_folders(folder / "house");
  EXPECT_EQ(told.machine, folder / "m");
  EXPECT_EQ(told.user, folder / "u");
  EXPECT_EQ(told.application, folder / "house");

  unsetenv("HOMEWARDEN_USER_DIR");
  setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
  setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
  const Folders usual = find_folders(std::nullopt);
  EXPECT_EQ(usual.user, folder / "config/homewarden");
  EXPECT_EQ(usual.application, folder / "data/homewarden");
  EXPECT_EQ(find_folders("").application, usual.application) << "an empty option is none";
  unsetenv("HOMEWARDEN_MACHINE_DIR");
  unsetenv("XDG_CONFIG_HOME");
  unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace homewarden::testing
