// The service under its own supervisor: real processes in a house of the test's own.

#include "platform/linux/supervisor.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include "platform/linux/detached_process.h"
#include "platform/linux/lock_file_instance.h"
#include "platform/linux/restart_pauses.h"
#include "platform/linux/service_log.h"
#include "platform/linux/supervised_services.h"
#include "platform/linux/supervisor_file.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::os_linux {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

// Of a process that has just ended nothing can be read; the iterator of a stream would throw.
std::string content(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

class SupervisorTest : public ::testing::Test {
 protected:
  // Whatever becomes of a test, nothing of it stays behind.
  ~SupervisorTest() override {
    services.stop("", "Wardengine");
    for (const bool supervises : {true, false})
      for (const pid_t process : processes(supervises)) ::kill(process, SIGKILL);
    EXPECT_TRUE(wait([&] { return processes(true).empty() && processes(false).empty(); }));
  }

  ServiceCommand command() const {
    std::vector<std::string> environment{"HOMEWARDEN_WEB_ADDRESS=127.0.0.1"};
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME", "XDG_CONFIG_HOME"})
      environment.push_back(std::string(name) + "=" + scratch.path().string());
    environment.push_back("HOMEWARDEN_MACHINE_DIR=" + folders.machine.string());
    environment.push_back("HOMEWARDEN_USER_DIR=" + folders.user.string());
    return {WARDENGINE_PATH,
            {"--stop-limit", "1", "--folder", folders.application.string()},
            environment};
  }

  static bool wait(const std::function<bool()>& condition, seconds limit = seconds(60)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
  }

  ServiceState state() { return services.query("", "Wardengine"); }
  bool reaches(ServiceState wanted) {
    return wait([&] { return state() == wanted; });
  }
  void start() {
    services.install();
    services.start("", "Wardengine");
    ASSERT_TRUE(reaches(ServiceState::kRunning)) << content(folders.machine / "wardengine.log");
  }

  // Those that run in this house.
  std::vector<pid_t> processes(bool supervising) {
    state();  // takes notice of those that have ended
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
      const std::string name = entry.path().filename().string();
      if (!std::ranges::all_of(name, [](char letter) { return letter >= '0' && letter <= '9'; }))
        continue;
      const std::string line = content(entry.path() / "cmdline");
      const bool here = line.find(folders.application.string()) != std::string::npos;
      const bool supervises = line.find("--supervise") != std::string::npos;
      if (here && supervises == supervising) found.push_back(std::stoi(name));
    }
    return found;
  }
  pid_t only(bool supervising) {
    wait([&] { return processes(supervising).size() == 1; });
    const auto found = processes(supervising);
    return found.size() == 1 ? found[0] : -1;
  }
  bool is_gone(pid_t process) {
    return wait([&] { return state(), ::kill(process, 0) != 0; });
  }

  testing::ScratchFolder scratch;
  Folders folders{scratch / "house", scratch / "machine", scratch / "user"};
  SupervisedServices services{folders, command()};
};

TEST_F(SupervisorTest, TwoWindowsThatStartItAtOnceEndWithOne) {
  EXPECT_EQ(state(), ServiceState::kUnknown);
  services.start("", "Wardengine");  // not installed
  services.install();
  EXPECT_EQ(state(), ServiceState::kStopped);
  SupervisedServices other(folders, command());
  services.start("", "Wardengine");
  other.start("", "Wardengine");
  EXPECT_TRUE(reaches(ServiceState::kRunning));
  const pid_t service = only(false);
  EXPECT_GT(only(true), 0);
  EXPECT_EQ(::getsid(service), only(true)) << "it would end with the window's session";
  EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(service) + "/cwd"), "/");

  services.remove();
  EXPECT_EQ(state(), ServiceState::kUnknown);
  EXPECT_GT(only(false), 0) << "it goes on until it is stopped";
  services.install();
  services.stop("", "Wardengine");
  EXPECT_TRUE(reaches(ServiceState::kStopped));
  EXPECT_TRUE(is_gone(service));
  EXPECT_NE(content(folders.machine / "wardengine.log").find("Finished"), std::string::npos);
}

TEST_F(SupervisorTest, AsksNoProcessButTheOneWithTheLock) {
  const auto stranger = start_detached({"/bin/sleep", {"600"}, {}});
  ASSERT_TRUE(stranger);
  const auto name_stranger = [&] {
    std::ofstream(folders.machine / kSupervisorFile) << *stranger << " supervising\n";
  };
  fs::create_directories(folders.machine);
  services.install();
  name_stranger();  // left by one that was killed, its number in use again
  EXPECT_EQ(state(), ServiceState::kStopped);
  services.stop("", "Wardengine");

  start();
  name_stranger();
  services.stop("", "Wardengine");
  EXPECT_TRUE(reaches(ServiceState::kStopped));
  EXPECT_EQ(::waitpid(*stranger, nullptr, WNOHANG), 0) << "the stranger was hit";
  ::kill(*stranger, SIGKILL);
  ::waitpid(*stranger, nullptr, 0);
}

TEST_F(SupervisorTest, BringsAKilledServiceBackAndTakesItAlongWhenKilledItself) {
  start();
  const pid_t first = only(false);
  ::kill(first, SIGKILL);
  EXPECT_TRUE(wait([&] { return state() == ServiceState::kRunning && only(false) != first; }));

  const pid_t second = only(false);
  const pid_t supervisor = only(true);
  ::kill(supervisor, SIGKILL);
  EXPECT_TRUE(is_gone(supervisor));
  EXPECT_TRUE(is_gone(second)) << "the service outlived its supervisor";
  EXPECT_EQ(state(), ServiceState::kStopped);
  start();

  fs::rename(folders.machine, scratch / "elsewhere");
  EXPECT_TRUE(wait([&] { return processes(true).empty() && processes(false).empty(); }))
      << "it serves a house that is gone";
}

TEST_F(SupervisorTest, AServiceThatWillNotStopIsKilledAndTheNextOneWaitsForThat) {
  start();
  const pid_t stuck = only(false);
  ::kill(stuck, SIGSTOP);
  services.stop("", "Wardengine");
  EXPECT_TRUE(reaches(ServiceState::kStopPending));
  services.start("", "Wardengine");  // by a window that was open for a moment only
  EXPECT_TRUE(is_gone(stuck));
  EXPECT_TRUE(reaches(ServiceState::kRunning)) << "nobody has the house";
  EXPECT_NE(content(folders.machine / "wardengine.log").find("is killed"), std::string::npos);
}

TEST_F(SupervisorTest, PausesGrowWhileItFailsSoonAndItsLogStaysSmall) {
  RestartPauses pauses;
  std::vector<long> lengths;
  for (int i = 0; i < 8; ++i) lengths.push_back(pauses.next(seconds(0)).count());
  EXPECT_EQ(lengths, (std::vector<long>{1, 2, 4, 8, 16, 32, 60, 60}));
  EXPECT_EQ(pauses.next(RestartPauses::kRanWell).count(), 1);

  ServiceLog log(scratch / "log");
  for (int i = 0; i < 1000; ++i) log.append(std::string(2000, 'x') + std::to_string(i) + "\n");
  for (const char* name : {"log", "log.1"})
    EXPECT_LE(fs::file_size(scratch / name), ServiceLog::kRoom) << name;
  EXPECT_TRUE(content(scratch / "log").ends_with("x999\n"));
}

// A window, a service and a supervisor would hang, each at another one.
TEST_F(SupervisorTest, PipesAndLinksInPlaceOfItsFilesHoldNothingUpAndAreNotWrittenThrough) {
  fs::create_directories(folders.machine);
  for (const char* name : {kSupervisorFile, kServiceLock, kWindowLock, kServiceLog})
    ASSERT_EQ(::mkfifo((folders.machine / name).c_str(), 0600), 0);
  services.install();
  EXPECT_EQ(state(), ServiceState::kStopped);
  services.stop("", "Wardengine");
  EXPECT_FALSE(LockFileInstance(folders.machine / kWindowLock).another_is_running());
  ServiceLog(folders.machine / kServiceLog).append("line\n");
  for (const char* name : {kSupervisorFile, kServiceLock}) fs::remove(folders.machine / name);
  start();

  const std::string text(100, 'x');
  std::ofstream(scratch / "letter") << text;
  fs::create_symlink(scratch / "letter", scratch / kSupervisorFile);
  EXPECT_EQ(SupervisorFile(scratch / kSupervisorFile).take(), SupervisorFile::Taken::kFailed);
  EXPECT_EQ(content(scratch / "letter"), text);
}

}  // namespace
}  // namespace homewarden::os_linux
