// The program itself, as a process of its own without a display.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <fstream>

#include "core/settings.h"
#include "platform/store/sqlite_registry.h"
#include "tests/platform/scratch_folder.h"

namespace homewarden::testing {
namespace {

namespace fs = std::filesystem;

class ProgramTest : public ::testing::Test {
 protected:
  std::unique_ptr<QProcess> start(const QStringList& options) {
    auto program = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    const QString home = QString::fromStdString(scratch.path().string());
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
      environment.insert(name, home);
    environment.insert("HOMEWARDEN_WEB_ADDRESS", "127.0.0.1");
    environment.insert("HOMEWARDEN_MACHINE_DIR", home + "/machine");
    environment.insert("HOMEWARDEN_USER_DIR", home + "/user");
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
      environment.remove(name);
    program->setProcessEnvironment(environment);
    program->start(HOMEWARDEN_PATH, options);
    EXPECT_TRUE(program->waitForStarted());
    return program;
  }

  // Everything printed up to the first line with this text; fails after 20 seconds.
  std::string output_until(QProcess& program, const QByteArray& text) {
    QByteArray output;
    QElapsedTimer timer;
    timer.start();
    while (!output.contains(text) && timer.elapsed() < 20000 &&
           program.state() == QProcess::Running) {
      program.waitForReadyRead(200);
      output += program.readAllStandardOutput();
    }
    EXPECT_TRUE(output.contains(text)) << output.toStdString();
    return output.toStdString();
  }

  int end(QProcess& program) {
    program.terminate();
    EXPECT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    return program.exitCode();
  }

  std::string setting(const fs::path& folder, const std::string& name) {
    store::SqliteRegistry registry(folder, folder);
    const auto value = registry.read(RegistryRoot::kLocalMachine, kMachineKey, name);
    return value ? value->data : "(none)";
  }

  ScratchFolder scratch;
};

TEST_F(ProgramTest, DemoFindsItsInterfaceKeepsASecondCopyOutAndEndsWhenAsked) {
  const auto demo = start({"--demo"});
  const std::string output = output_until(*demo, "STATUS: Ready");
  EXPECT_NE(output.find("There is no display"), std::string::npos);
  const fs::path machine = scratch / "homewarden-demo/machine";
  EXPECT_EQ(setting(machine, "closeengine"), "True");

  const auto second = start({"--demo"});
  EXPECT_TRUE(second->waitForFinished(9000)) << "a second copy stayed";
  EXPECT_EQ(second->readAllStandardOutput().count('\n'), 1) << "it said more than its first line";
  EXPECT_EQ(demo->state(), QProcess::Running);

  EXPECT_EQ(end(*demo), 0);
  EXPECT_EQ(setting(machine, "closeengine"), "False");
  EXPECT_FALSE(fs::exists(scratch / "machine")) << "the demo touched the folder of a real house";
  EXPECT_FALSE(fs::exists(scratch / "user"));
}

TEST_F(ProgramTest, AfterAKillItStartsAgainAndAResetFurnishesAnew) {
  auto demo = start({"--demo"});
  output_until(*demo, "Found and Initialized");
  demo->kill();
  demo->waitForFinished();
  const fs::path list = scratch / "homewarden-demo/rmlst.hwd";
  std::ofstream(list, std::ios::app) << "Attic~~~\r\n";
  const auto furnished = fs::file_size(list) - 10;

  demo = start({"--demo"});
  output_until(*demo, "Found and Initialized");
  EXPECT_EQ(end(*demo), 0);
  EXPECT_EQ(fs::file_size(list), furnished + 10) << "the demo house was furnished over changes";

  demo = start({"--demo-reset"});
  output_until(*demo, "Found and Initialized");
  EXPECT_EQ(end(*demo), 0);
  EXPECT_EQ(fs::file_size(list), furnished);
}

TEST_F(ProgramTest, ABinaryRoomListIsNoReasonNotToStart) {
  fs::create_directories(scratch / "house");
  std::ofstream file(scratch / "house/rmlst.hwd", std::ios::binary);
  for (unsigned i = 0; i < 300000; ++i) file.put(static_cast<char>(i * 7919 >> 3));
  file << "\r\nHall~Lamp~A~1\r\n";
  file.close();
  const auto size = fs::file_size(scratch / "house/rmlst.hwd");
  // Links that lead nowhere: the search touches no real port.
  fs::create_directories(scratch / "machine/ports");
  for (int port = 1; port <= 15; ++port)
    fs::create_symlink(scratch / "nowhere", scratch / ("machine/ports/com" + std::to_string(port)));
  const auto program = start({"--folder", QString::fromStdString((scratch / "house").string())});
  const std::string output = output_until(*program, "ERROR!: Sorry, Could not find a CM11");
  EXPECT_NE(output.find("looking for interface on com port 15"), std::string::npos);
  EXPECT_EQ(end(*program), 0);
  EXPECT_EQ(fs::file_size(scratch / "house/rmlst.hwd"), size);
  EXPECT_TRUE(fs::exists(scratch / "house/html/bulbon.gif")) << "the folder was not filled";
}

}  // namespace
}  // namespace homewarden::testing
