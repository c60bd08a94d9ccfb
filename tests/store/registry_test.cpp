// What every registry promises, and what the one on disk promises beyond that.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/store/sqlite_registry.h"
#include "tests/platform/as_nobody.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {

using store::SqliteRegistry;

namespace {

constexpr auto kMachine = RegistryRoot::kLocalMachine;
constexpr auto kUser = RegistryRoot::kCurrentUser;
const std::string kKey = "Software\\Test";

RegistryValue text(std::string data) {
  return {RegistryType::kString, std::move(data)};
}

struct OnDisk {
  ScratchFolder folder;
  SqliteRegistry registry{folder / "machine", folder / "user"};
};
struct InMemory {
  MemoryRegistry registry;
};

template <class Kind>
struct RegistryContract : ::testing::Test {
  Kind kind;
};
using Kinds = ::testing::Types<OnDisk, InMemory>;
TYPED_TEST_SUITE(RegistryContract, Kinds);

TYPED_TEST(RegistryContract, KeepsTypesBytesAndRootsApart) {
  Registry& registry = this->kind.registry;
  EXPECT_FALSE(registry.read(kMachine, kKey, "port"));
  const std::string bytes("a\0b\xE9'\"\n", 7);
  EXPECT_TRUE(registry.write(kMachine, kKey, "port", {RegistryType::kNumber, "3"}));
  EXPECT_TRUE(registry.write(kMachine, kKey, "name", text(bytes)));
  EXPECT_TRUE(registry.write(kMachine, kKey, "empty", text("")));
  EXPECT_EQ(registry.read(kMachine, kKey, "port")->type, RegistryType::kNumber);
  EXPECT_EQ(registry.read(kMachine, kKey, "name")->data, bytes);
  EXPECT_EQ(registry.read(kMachine, kKey, "empty")->data, "");
  EXPECT_FALSE(registry.read(kUser, kKey, "name"));
  EXPECT_FALSE(registry.read(kMachine, "Software", "name"));
}

TYPED_TEST(RegistryContract, FindsNamesWithoutRegardToCaseAndTheLastWriteWins) {
  Registry& registry = this->kind.registry;
  registry.write(kMachine, "Software\\TEST", "HallLamp", text("False"));
  registry.write(kMachine, kKey, "hallLAMP", {RegistryType::kNumber, "1"});
  EXPECT_EQ(registry.read(kMachine, kKey, "HallLamp"), (RegistryValue{RegistryType::kNumber, "1"}));
  registry.write(kMachine, kKey, "Gr\xFCn", text("True"));
  EXPECT_FALSE(registry.read(kMachine, kKey, "Gr\xDCn")) << "only ASCII letters lose their case";
}

TYPED_TEST(RegistryContract, RemovesOneValueAndCountsChangesAndNothingElse) {
  Registry& registry = this->kind.registry;
  EXPECT_TRUE(registry.remove(kMachine, kKey, "port")) << "there was none";
  registry.write(kMachine, kKey, "port", text("2"));
  registry.write(kMachine, kKey, "ports", text("3"));
  registry.write(kUser, kKey, "port", text("4"));
  const auto first = registry.changes(kMachine);
  EXPECT_TRUE(registry.read(kMachine, kKey, "port"));
  EXPECT_EQ(registry.changes(kMachine), first);
  registry.write(kMachine, kKey, "port", text("3"));
  const auto second = registry.changes(kMachine);
  EXPECT_NE(second, first);
  EXPECT_TRUE(registry.remove(kMachine, kKey, "PORT"));
  EXPECT_NE(registry.changes(kMachine), second);
  EXPECT_NE(registry.changes(kMachine), first);
  EXPECT_FALSE(registry.read(kMachine, kKey, "port"));
  EXPECT_TRUE(registry.read(kMachine, kKey, "ports"));
  EXPECT_TRUE(registry.read(kUser, kKey, "port"));
}

TEST(SqliteRegistry, WhatAnotherProcessChangesIsSeenAndCounted) {
  ScratchFolder folder;
  SqliteRegistry registry(folder.path(), folder.path() / "user");
  const auto before = registry.changes(kMachine);
  const auto user_before = registry.changes(kUser);
  EXPECT_EQ(registry.changes(kMachine), before);
  {
    SqliteRegistry other(folder.path(), folder.path() / "user");
    EXPECT_FALSE(other.read(kMachine, kKey, "port"));
    other.write(kMachine, kKey, "port", text("3"));
  }
  EXPECT_EQ(registry.read(kMachine, kKey, "port"), text("3"));
  EXPECT_NE(registry.changes(kMachine), before);
  EXPECT_EQ(registry.changes(kUser), user_before);
}

TEST(SqliteRegistry, SpoiledPagesAreSetAsideAtTheNextStart) {
  ScratchFolder folder;
  {
    SqliteRegistry registry(folder.path(), folder.path());
    for (int i = 0; i < 300; ++i)
      registry.write(kMachine, kKey, "value" + std::to_string(i), text(std::string(40, 'v')));
  }
  const auto size = std::filesystem::file_size(folder / "machine.db");
  ASSERT_GT(size, 8192u);
  {
    std::fstream file(folder / "machine.db", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(size - 4096, '\xAA');
  }
  SqliteRegistry registry(folder.path(), folder.path());
  EXPECT_FALSE(registry.read(kMachine, kKey, "value7"));
  EXPECT_TRUE(registry.write(kMachine, kKey, "value7", text("new")));
  EXPECT_EQ(registry.read(kMachine, kKey, "value7"), text("new"));
  EXPECT_EQ(std::filesystem::file_size(folder / "machine.db.broken-1"), size);
}

TEST(SqliteRegistry, AFolderThatMayNotBeWrittenOrMadeReadsAsEmptyAndRefusesWrites) {
  const AsNobody nobody;
  ScratchFolder folder;
  std::filesystem::permissions(
      folder.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  SqliteRegistry registry(folder.path(), folder.path());
  EXPECT_FALSE(registry.read(kMachine, kKey, "port"));
  EXPECT_FALSE(registry.write(kMachine, kKey, "port", text("3")));
  std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
  EXPECT_TRUE(registry.write(kMachine, kKey, "port", text("3"))) << "it did not try again";

  std::ofstream(folder / "file") << "in the way";
  SqliteRegistry nowhere(folder / "file", folder / "file");
  EXPECT_FALSE(nowhere.read(kMachine, kKey, "port"));
  EXPECT_FALSE(nowhere.write(kMachine, kKey, "port", text("3")));
}

// Runs a function in another process, which ends with it.
template <class Function>
pid_t in_child(Function function) {
  const pid_t child = fork();
  if (child == 0) {
    function();
    _exit(0);
  }
  return child;
}

// Processes open a store that is missing or broken at the same moment and write, many times over.
class StartTogether : public ::testing::TestWithParam<bool> {};

TEST_P(StartTogether, NoWriteIsRefusedOrLost) {
  constexpr int kValues = 10;
  const bool begins_broken = GetParam();
  for (int round = 0; round < 10; ++round) {
    ScratchFolder folder;
    if (begins_broken) std::ofstream(folder / "machine.db") << std::string(5000, 'x');
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    std::vector<pid_t> writers;
    for (const char* who : {"a", "b", "c"})
      writers.push_back(in_child([&folder, &start, who] {
        close(start[1]);
        char end = 0;
        if (read(start[0], &end, 1) != 0) _exit(2);
        SqliteRegistry registry(folder.path(), folder.path());
        for (int i = 0; i < kValues; ++i)
          if (!registry.write(kMachine, kKey, who + std::to_string(i), text(who))) _exit(1);
      }));
    close(start[0]);
    close(start[1]);
    for (const pid_t writer : writers) {
      int status = 0;
      waitpid(writer, &status, 0);
      EXPECT_EQ(status, 0) << "a write was refused while another process wrote";
    }
    SqliteRegistry registry(folder.path(), folder.path());
    for (const char* who : {"a", "b", "c"})
      for (int i = 0; i < kValues; ++i)
        ASSERT_TRUE(registry.read(kMachine, kKey, who + std::to_string(i))) << who << i;
    EXPECT_EQ(std::filesystem::exists(folder / "machine.db.broken-1"), begins_broken);
    EXPECT_FALSE(std::filesystem::exists(folder / "machine.db.broken-2"))
        << "the store that was begun anew was set aside too";
  }
}

INSTANTIATE_TEST_SUITE_P(SqliteRegistry, StartTogether, ::testing::Bool());

TEST(SqliteRegistry, KilledAtAnyMomentLosesNothingThatWasReportedAsWritten) {
  ScratchFolder folder;
  for (int round = 0; round < 12; ++round) {
    int reports[2];
    ASSERT_EQ(pipe(reports), 0);
    const pid_t writer = in_child([&folder, &reports, round] {
      SqliteRegistry registry(folder.path(), folder.path());
      for (int i = 0;; ++i)
        if (registry.write(kMachine, kKey, std::to_string(round) + "-" + std::to_string(i),
                           text("kept"))) [[maybe_unused]]
          const auto told = write(reports[1], &i, sizeof i);
    });
    close(reports[1]);
    // Killed after a number of reports, at a moment within a write that differs from round to
    // round.
    int last = -1;
    for (int i = 0; i <= round; ++i) ASSERT_EQ(read(reports[0], &last, sizeof last), 4);
    usleep(static_cast<useconds_t>(round * 137));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    while (read(reports[0], &last, sizeof last) == 4) continue;
    close(reports[0]);
    SqliteRegistry registry(folder.path(), folder.path());
    for (int i = 0; i <= last; ++i)
      ASSERT_TRUE(registry.read(kMachine, kKey, std::to_string(round) + "-" + std::to_string(i)))
          << "round " << round << " value " << i << " of " << last;
  }
}

}  // namespace
}  // namespace homewarden::testing
