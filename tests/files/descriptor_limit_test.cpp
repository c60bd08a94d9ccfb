#include "platform/linux/descriptor_limit.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace homewarden::testing {
namespace {

rlimit limit_now() {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  return limit;
}

// A browser that is opened, or whatever it opens, cannot live with numbers beyond 1024.
TEST(DescriptorLimitTest, IsRaisedForThisProcessAlone) {
  rlimit few = limit_now();
  if (few.rlim_max < 600) GTEST_SKIP() << "the system allows no more than it gave";
  few.rlim_cur = 500;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  os_linux::raise_descriptor_limit(600);
  EXPECT_EQ(limit_now().rlim_cur, 600u);
  EXPECT_EQ(limit_now().rlim_max, few.rlim_max);
  const pid_t child = ::fork();
  if (child == 0) ::_exit(limit_now().rlim_cur == 500 ? 0 : 1);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  os_linux::raise_descriptor_limit(100);
  EXPECT_EQ(limit_now().rlim_cur, 600u) << "lowered";
}

}  // namespace
}  // namespace homewarden::testing
