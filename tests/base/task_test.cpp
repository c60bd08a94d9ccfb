#include "base/task.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "base/operations.h"
#include "platform/waiting.h"
#include "tests/platform/virtual_loop.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

struct Guard {
  explicit Guard(int& count) : count_(count) {}
  Guard(const Guard&) = delete;
  ~Guard() { ++count_; }
  int& count_;
};

Task<int> answer(EventLoop& loop, int value) {
  co_await Delay(loop, 10ms);
  if (value < 0) throw std::runtime_error("negative");
  co_return value;
}

Task<void> sum(EventLoop& loop, int& total, int& guards) {
  const Guard guard(guards);
  const int first = co_await answer(loop, 1);
  const int second = co_await answer(loop, 2);
  total = first + second;
}

Task<void> fail(EventLoop& loop) {
  co_await answer(loop, -1);
}

Task<int> at_once(int value) {
  co_return value;
}

// The address sanitizer keeps the frames of tail calls.
#ifdef __SANITIZE_ADDRESS__
constexpr int kMany = 500;
#else
constexpr int kMany = 200000;
#endif

Task<void> many(long& total) {
  for (int i = 0; i < kMany; ++i) {
    const int value = co_await at_once(1);
    total += value;
  }
}

Task<void> start_another_at_the_end(Operations& operations, EventLoop& loop, int& total,
                                    int& guards) {
  struct Starter {
    Operations& operations;
    EventLoop& loop;
    int& total;
    int& guards;
    ~Starter() { operations.start(sum(loop, total, guards)); }
  };
  const Starter starter{operations, loop, total, guards};
  co_await Delay(loop, 1h);
}

TEST(Task, RunsToItsEndAndGivesItsResult) {
  VirtualLoop loop;
  int total = 0;
  int guards = 0;
  Operations operations([](std::exception_ptr) { FAIL(); });
  operations.start(sum(loop, total, guards));
  EXPECT_EQ(operations.running(), 1u);
  loop.advance(20ms);
  EXPECT_EQ(total, 3);
  EXPECT_EQ(guards, 1);
  EXPECT_EQ(operations.running(), 0u);
}

TEST(Task, DestroyedWhereItWaitsRunsItsGuardsAndIsNeverResumed) {
  VirtualLoop loop;
  int total = 0;
  int guards = 0;
  {
    Operations operations([](std::exception_ptr) { FAIL(); });
    operations.start(sum(loop, total, guards));
    operations.start(start_another_at_the_end(operations, loop, total, guards));
    loop.advance(15ms);
  }
  EXPECT_EQ(guards, 2);
  EXPECT_EQ(loop.pending_calls(), 0u) << "the loop would resume a destroyed operation";
  loop.advance(1h);
  EXPECT_EQ(total, 0);
}

Task<void> wait_for_end(Operations& operations, Operations::Id other, EventLoop& loop) {
  co_await Delay(loop, 15ms);
  operations.end(other);
}

// The wrong one ended, one that is resumed later or twice, or one that a late name still reaches.
TEST(Task, OneOperationIsEndedByItsNameAndTheOthersGoOn) {
  VirtualLoop loop;
  int ended = 0;
  int total = 0;
  int ended_guards = 0;
  int guards = 0;
  Operations operations([](std::exception_ptr) { FAIL(); });
  const auto id = operations.start(sum(loop, ended, ended_guards));
  operations.start(sum(loop, total, guards));
  operations.start(wait_for_end(operations, id, loop));
  loop.advance(16ms);
  EXPECT_EQ(ended_guards, 1);
  EXPECT_EQ(operations.running(), 1u);
  operations.end(id);
  operations.end(0);
  loop.advance(1h);
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(total, 3);
  EXPECT_EQ(guards, 1);

  long counted = 0;
  const auto at_its_end = operations.start(many(counted));
  operations.start(sum(loop, total, guards));
  operations.end(at_its_end);
  EXPECT_EQ(operations.running(), 1u) << "the name of an operation that has ended reached another";
}

#ifndef NDEBUG
Task<void> await_twice(EventLoop& loop) {
  auto task = answer(loop, 1);
  co_await task;
  co_await task;
}

TEST(TaskDeathTest, AwaitingATaskTwiceIsNamed) {
  VirtualLoop loop;
  Operations operations([](std::exception_ptr) { FAIL(); });
  operations.start(await_twice(loop));
  EXPECT_DEATH(loop.advance(20ms), "a task is awaited once");
}
#endif

TEST(Task, AnExceptionReachesTheOwnerAndTheOthersGoOn) {
  VirtualLoop loop;
  std::string error;
  int total = 0;
  int guards = 0;
  Operations operations([&error](std::exception_ptr escaped) {
    try {
      std::rethrow_exception(escaped);
    } catch (const std::runtime_error& what) {
      error = what.what();
    }
  });
  operations.start(fail(loop));
  operations.start(sum(loop, total, guards));
  loop.advance(20ms);
  EXPECT_EQ(error, "negative");
  EXPECT_EQ(total, 3);
}

TEST(Task, ALongLoopOfOperationsThatDoNotWaitNeedsNoStack) {
  long total = 0;
  Operations operations([](std::exception_ptr) { FAIL(); });
  operations.start(many(total));
  EXPECT_EQ(total, kMany);
}

}  // namespace
}  // namespace homewarden::testing
