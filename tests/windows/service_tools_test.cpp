// The command lines and values by which Windows knows the service and the program.

#include "platform/windows/service_tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/windows/run_entry.h"
#include "tests/platform/memory_registry.h"

namespace homewarden::windows {
namespace {

using ::testing::ElementsAre, ::testing::HasSubstr;

const std::string kService = "SYSTEM\\CurrentControlSet\\Services\\Wardengine";

struct FakeShell : Shell {
  bool run(const std::string& command_line) override {
    lines.push_back(command_line);
    return works;
  }
  std::vector<std::string> lines;
  bool works = true;
};

TEST(WindowsTest, ServiceAndLogonEntryHaveTheirExactLinesAndValues) {
  FakeShell shell;
  homewarden::testing::MemoryRegistry registry;
  const auto value = [&registry](const std::string& key, const std::string& name) {
    return registry.read(RegistryRoot::kLocalMachine, key, name).value().data;
  };
  ServiceTools tools(shell, registry, "C:\\WINDOWS", "C:\\Program Files\\Homewarden");
  std::vector<std::string> reports;
  tools.reported.connect([&reports](const std::string& text) { reports.push_back(text); });
  tools.install();
  tools.remove();
  EXPECT_THAT(shell.lines, ElementsAre("C:\\WINDOWS\\ntservice\\INSTSRV Wardengine "
                                       "C:\\WINDOWS\\ntservice\\SRVANY.EXE",
                                       "C:\\WINDOWS\\ntservice\\INSTSRV Wardengine REMOVE"));
  EXPECT_EQ(value(kService + "\\Parameters", "Application"),
            "C:\\Program Files\\Homewarden\\Wardengine.exe");
  EXPECT_EQ(value(kService, "Description"),
            "This is the Homewarden service engine. Without this, you wouldnt be able to control "
            "your X10 devices whilst logged out of your computer");
  shell.works = false;
  tools.install();
  EXPECT_THAT(reports, ElementsAre("", "", HasSubstr("could not be installed")));

  const std::string run = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
  RunEntry entry(registry, "D:\\House");
  EXPECT_TRUE(entry.fill());
  EXPECT_EQ(value(run, "Homewarden"), "D:\\House\\homewarden.exe");
  EXPECT_TRUE(entry.clear());
  EXPECT_EQ(value(run, "Homewarden"), "");
}

}  // namespace
}  // namespace homewarden::windows
