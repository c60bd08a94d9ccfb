// What every registry promises, and what the one on disk promises beyond that.

#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/store/sqlite_registry.h"
#include "tests/platform/as_nobody.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {

using store::SqliteRegistry;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

constexpr auto kMachine = RegistryRoot::kLocalMachine;
constexpr auto kUser = RegistryRoot::kCurrentUser;
const std::string kKey = "Software\\Test";

RegistryValue text(std::string data) {
  return {RegistryType::kString, std::move(data)};
}

// Whether it comes to that within a time that no machine needs.
bool comes(const std::function<bool()>& condition) {
  for (int tries = 0; tries < 3000; ++tries, std::this_thread::sleep_for(10ms))
    if (condition()) return true;
  return false;
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
  registry.write(kMachine, kKey, "port", {RegistryType::kNumber, "3"});
  registry.write(kMachine, kKey, "name", text(bytes));
  registry.write(kMachine, kKey, "empty", text(""));
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
  registry.remove(kMachine, kKey, "port");  // there is none
  registry.write(kMachine, kKey, "port", text("2"));
  registry.write(kMachine, kKey, "ports", text("3"));
  registry.write(kUser, kKey, "port", text("4"));
  const auto first = registry.changes(kMachine);
  EXPECT_TRUE(registry.read(kMachine, kKey, "port"));
  EXPECT_EQ(registry.changes(kMachine), first);
  registry.write(kMachine, kKey, "port", text("3"));
  const auto second = registry.changes(kMachine);
  EXPECT_NE(second, first);
  registry.remove(kMachine, kKey, "PORT");
  EXPECT_NE(registry.changes(kMachine), second);
  EXPECT_NE(registry.changes(kMachine), first);
  EXPECT_FALSE(registry.read(kMachine, kKey, "port"));
  EXPECT_TRUE(registry.read(kMachine, kKey, "ports"));
  EXPECT_TRUE(registry.read(kUser, kKey, "port"));
  EXPECT_TRUE(comes([&] { return registry.state(kMachine).is_on_disk(); }));
  EXPECT_EQ(registry.state(kMachine).trouble, StoreTrouble::kNone);
}

TEST(SqliteRegistry, WhatAnotherProcessChangesIsSeenAndCountedUnlessAnOwnChangeWaits) {
  ScratchFolder folder;
  SqliteRegistry registry(folder.path(), folder.path() / "user");
  const auto before = registry.changes(kMachine);
  const auto user_before = registry.changes(kUser);
  EXPECT_EQ(registry.changes(kMachine), before);
  {
    SqliteRegistry other(folder.path(), folder.path() / "user");
    EXPECT_FALSE(other.read(kMachine, kKey, "port"));
    other.write(kMachine, kKey, "port", text("3"));
    other.write(kMachine, kKey, "lamp", text("theirs"));
    registry.write(kMachine, kKey, "lamp", text("ours"));
    EXPECT_EQ(registry.read(kMachine, kKey, "lamp"), text("ours"));
    EXPECT_TRUE(other.flush(30s).empty());
    EXPECT_TRUE(registry.flush(30s).empty());
  }
  EXPECT_TRUE(comes([&] { return registry.changes(kMachine) > before + 1; }));
  EXPECT_EQ(registry.read(kMachine, kKey, "port"), text("3"));
  EXPECT_EQ(registry.changes(kUser), user_before);
  SqliteRegistry later(folder.path(), folder.path() / "user");
  EXPECT_EQ(later.read(kMachine, kKey, "lamp"), registry.read(kMachine, kKey, "lamp"));
}

TEST(SqliteRegistry, SpoiledPagesAreSetAsideAndAFileThatGoesIsWrittenAnew) {
  ScratchFolder folder;
  const auto fill = [](SqliteRegistry& registry) {
    for (int i = 0; i < 300; ++i)
      registry.write(kMachine, kKey, "value" + std::to_string(i), text(std::string(40, 'v')));
    EXPECT_TRUE(registry.flush(30s).empty());
  };
  const auto spoil = [&folder] {
    const auto size = fs::file_size(folder / "machine.db");
    std::fstream file(folder / "machine.db", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(size - 4096, '\xAA');
    return size;
  };
  {
    SqliteRegistry registry(folder.path(), folder.path());
    fill(registry);
  }
  const auto size = spoil();
  ASSERT_GT(size, 8192u);
  SqliteRegistry registry(folder.path(), folder.path());
  EXPECT_FALSE(registry.read(kMachine, kKey, "value7"));
  EXPECT_EQ(registry.state(kMachine).set_aside, (folder / "machine.db.broken-1").string());
  EXPECT_FALSE(registry.state(kMachine).restored);
  EXPECT_EQ(fs::file_size(folder / "machine.db.broken-1"), size);
  fill(registry);

  // Under the running program, by somebody who tidies up.
  const auto is_whole = [&] {
    SqliteRegistry other(folder.path(), folder.path());
    return other.read(kMachine, kKey, "value7") && other.read(kMachine, kKey, "value299");
  };
  for (const char* end : {"", "-wal", "-shm"})
    fs::remove(folder / ("machine.db" + std::string(end)));
  EXPECT_TRUE(comes([&] { return registry.changes(kMachine) && is_whole(); }));
  // By somebody who takes the log for rubbish, or spoils the file in place.
  const fs::path copy = folder / "copy";
  const auto is_kept = [&](const char* name) {
    registry.changes(kMachine);  // looks
    fs::create_directories(copy);
    for (const char* end : {"", "-wal"}) {
      std::error_code is_missing;
      fs::remove(copy / ("machine.db" + std::string(end)));
      fs::copy_file(folder / ("machine.db" + std::string(end)),
                    copy / ("machine.db" + std::string(end)), is_missing);
    }
    SqliteRegistry other(copy, copy);
    return other.read(kMachine, kKey, name) == text("kept") && other.read(kMachine, kKey, "value7");
  };
  const std::function<void()> damages[] = {[&] { fs::remove(folder / "machine.db-wal"); },
                                           [&] { fs::resize_file(folder / "machine.db-wal", 0); },
                                           [&] { spoil(); },
                                           [&] { fs::resize_file(folder / "machine.db", 0); }};
  for (const auto& damage : damages) {
    const std::string name = "damage" + std::to_string(&damage - damages);
    registry.write(kMachine, kKey, name, text("kept"));
    EXPECT_TRUE(registry.flush(30s).empty());
    damage();
    EXPECT_TRUE(comes([&] { return is_kept(name.c_str()); })) << name;
  }
  // By a disk that goes away.
  fs::remove_all(folder.path());
  std::ofstream(folder.path()) << "in the way";
  EXPECT_TRUE(comes([&] {
    return registry.changes(kMachine) && registry.state(kMachine).trouble != StoreTrouble::kNone;
  }));
  EXPECT_EQ(registry.read(kMachine, kKey, "value7"), text(std::string(40, 'v')));
  fs::remove(folder.path());
  EXPECT_TRUE(comes([&] { return registry.changes(kMachine) && is_whole(); }));
}

// A store as a stop left it, in a folder that is then closed for writing: read all the same, with
// what stands in its log alone.
TEST(SqliteRegistry, AFolderThatMayNotBeWrittenIsReadWithItsLogAndWrittenWhenItMay) {
  const AsNobody nobody;
  for (const std::vector<std::string>& left :
       {std::vector<std::string>{"", "-wal", "-shm"}, {"", "-wal"}, {""}}) {
    ScratchFolder folder;
    const fs::path closed = folder / "closed % ?#";
    {
      SqliteRegistry registry(folder / "open", folder / "open");
      registry.write(kMachine, kKey, "port", text("3"));
      ASSERT_TRUE(registry.flush(30s).empty());
      if (left.size() > 1) fs::copy(folder / "open", closed);
    }
    if (left.size() == 1) fs::copy(folder / "open", closed);
    if (left.size() == 2) fs::remove(closed / "machine.db-shm");
    const auto permit = [&closed](fs::perms permissions) {
      fs::permissions(closed, fs::perms::owner_all);
      for (const auto& file : fs::directory_iterator(closed)) fs::permissions(file, permissions);
      fs::permissions(closed, permissions | fs::perms::owner_exec);
    };
    permit(fs::perms::owner_read);
    SqliteRegistry registry(closed, closed);
    EXPECT_EQ(registry.read(kMachine, kKey, "port"), text("3")) << left.size();
    registry.write(kMachine, kKey, "port", text("4"));
    EXPECT_FALSE(registry.flush(20ms).empty());
    EXPECT_EQ(registry.state(kMachine).trouble, StoreTrouble::kForbidden);
    EXPECT_EQ(registry.read(kMachine, kKey, "port"), text("4"));
    permit(fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(registry.flush(30s).empty()) << "it did not try again";
    EXPECT_TRUE(comes([&] { return registry.state(kMachine).trouble == StoreTrouble::kNone; }));
    EXPECT_FALSE(fs::exists(closed / "machine.db.broken-1"));
  }
}

TEST(SqliteRegistry, WhereNothingCanBeMadeOrReadTheProgramWorksInMemory) {
  const AsNobody nobody;
  ScratchFolder folder;
  std::ofstream(folder / "file") << "in the way";
  SqliteRegistry nowhere(folder / "file", folder / "file/user");
  nowhere.write(kUser, kKey, "port", text("3"));
  EXPECT_EQ(nowhere.read(kUser, kKey, "port"), text("3"));
  EXPECT_FALSE(nowhere.flush(20ms).empty());
  EXPECT_TRUE(nowhere.state(kUser).is_read);
  EXPECT_NE(nowhere.state(kUser).trouble, StoreTrouble::kNone);

  fs::create_directory(folder / "begun");
  std::ofstream(folder / "begun/machine.db").flush();
  fs::permissions(folder / "begun", fs::perms::owner_read | fs::perms::owner_exec);
  SqliteRegistry begun(folder / "begun", folder / "begun");
  EXPECT_TRUE(begun.state(kMachine).is_read);
  fs::permissions(folder / "begun", fs::perms::owner_all);

  { SqliteRegistry(folder.path(), folder.path()).write(kMachine, kKey, "port", text("2")); }
  fs::permissions(folder / "machine.db", fs::perms::none);
  SqliteRegistry secret(folder.path(), folder.path());
  EXPECT_FALSE(secret.state(kMachine).is_read) << "what nobody could read passed for empty";
  secret.write(kMachine, kKey, "lamp", text("True"));
  fs::permissions(folder / "machine.db", fs::perms::owner_all);
  EXPECT_TRUE(secret.flush(30s).empty());
  EXPECT_EQ(secret.read(kMachine, kKey, "port"), text("2"));
  EXPECT_EQ(secret.read(kMachine, kKey, "lamp"), text("True"));
}

TEST(SqliteRegistry, ALockIsWaitedForByNobodyAndTold) {
  ScratchFolder folder;
  { SqliteRegistry(folder.path(), folder.path()).write(kMachine, kKey, "port", text("2")); }
  sqlite3* other = nullptr;
  sqlite3_open((folder / "machine.db").c_str(), &other);
  sqlite3_exec(other, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  std::vector<std::function<void()>> calls;
  std::mutex calls_lock;
  SqliteRegistry registry(folder.path(), folder.path(), [&](std::function<void()> call) {
    const std::lock_guard guard(calls_lock);
    calls.push_back(std::move(call));
  });
  int told = 0;
  registry.changed.connect([&](RegistryRoot) { ++told; });
  EXPECT_FALSE(registry.state(kMachine).is_read);
  registry.write(kMachine, kKey, "lamp", text("True"));
  EXPECT_TRUE(comes([&] { return registry.state(kMachine).trouble == StoreTrouble::kLocked; }));
  EXPECT_FALSE(fs::exists(folder / "machine.db.broken-1"));
  sqlite3_close(other);
  EXPECT_TRUE(registry.flush(30s).empty());
  EXPECT_EQ(registry.read(kMachine, kKey, "port"), text("2"));
  EXPECT_TRUE(comes([&] { return registry.state(kMachine).trouble == StoreTrouble::kNone; }));
  const std::lock_guard guard(calls_lock);
  for (const auto& call : calls) call();
  EXPECT_GE(told, 3) << "locked, read, written";
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
        for (int i = 0; i < kValues; ++i) {
          registry.write(kMachine, kKey, who + std::to_string(i), text(who));
          if (i % 3 == 0 && !registry.flush(30s).empty()) _exit(1);
        }
        if (!registry.flush(30s).empty()) _exit(1);
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
    EXPECT_EQ(fs::exists(folder / "machine.db.broken-1"), begins_broken);
    EXPECT_FALSE(fs::exists(folder / "machine.db.broken-2"))
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
      for (int i = 0;; ++i) {
        registry.write(kMachine, kKey, std::to_string(round) + "-" + std::to_string(i),
                       text("kept"));
        const StoreState state = registry.state(kMachine);
        if (state.on_disk == 0) continue;
        const int on_disk = static_cast<int>(state.on_disk) - 1;
        [[maybe_unused]] const auto told = write(reports[1], &on_disk, sizeof on_disk);
      }
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
