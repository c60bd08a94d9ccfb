#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr std::chrono::seconds kLimit{10};

// One byte, or nothing when the other end is gone or silent for too long.
std::optional<unsigned char> read_byte(int fd, std::chrono::milliseconds limit = kLimit) {
  pollfd polled{fd, POLLIN, 0};
  if (poll(&polled, 1, static_cast<int>(limit.count())) <= 0) return std::nullopt;
  unsigned char byte = 0;
  return read(fd, &byte, 1) == 1 ? std::optional(byte) : std::nullopt;
}

// The tool as its users start it: lines in, lines out.
class Tool {
 public:
  explicit Tool(std::vector<std::string> arguments) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) return;
    std::string path = CM11_EMULATOR_PATH;
    std::vector<char*> pointers{path.data()};
    for (auto& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
      dup2(in[0], 0);
      dup2(out[1], 1);
      execv(pointers[0], pointers.data());
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    in_ = in[1];
    out_ = out[0];
  }
  ~Tool() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      wait_for_end();
    }
    end_input();
    close(out_);
  }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  void type(const std::string& line) {
    const std::string text = line + "\n";
    EXPECT_EQ(write(in_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  std::string line() {
    std::string text;
    for (auto byte = read_byte(out_); byte && *byte != '\n'; byte = read_byte(out_))
      text += static_cast<char>(*byte);
    return text;
  }

  void end_input() {
    if (in_ >= 0) close(in_);
    in_ = -1;
  }

  void terminate() { kill(pid_, SIGTERM); }

  int wait_for_end() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t pid_ = -1;
  int in_ = -1;
  int out_ = -1;
};

// A client of the interface that shares nothing with it but the published protocol.
class Client {
 public:
  explicit Client(const std::string& path) : fd_(open(path.c_str(), O_RDWR | O_NOCTTY)) {
    EXPECT_GE(fd_, 0) << path;
    termios settings{};
    tcgetattr(fd_, &settings);
    cfmakeraw(&settings);
    cfsetspeed(&settings, B4800);
    tcsetattr(fd_, TCSAFLUSH, &settings);
  }
  ~Client() { close(fd_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  int ask(std::initializer_list<unsigned char> bytes) {
    EXPECT_EQ(write(fd_, bytes.begin(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    return read_byte(fd_).value_or(-1);
  }

  bool transmit(unsigned char header, unsigned char code) {
    return ask({header, code}) == ((header + code) & 0xFF) && ask({0x00}) == 0x55;
  }

  // True when the port goes away within the limit.
  bool sees_loss() const {
    pollfd polled{fd_, POLLIN, 0};
    return poll(&polled, 1, 10000) == 1 && (polled.revents & POLLHUP) != 0;
  }

  int next() const { return read_byte(fd_).value_or(-1); }

 private:
  int fd_;
};

TEST(Tool, AnIndependentClientSwitchesALamp) {
  Tool tool({"--fast"});
  const std::string path = tool.line();
  Client client(path);
  EXPECT_TRUE(client.transmit(0x04, 0x62));
  EXPECT_TRUE(client.transmit(0x06, 0x62));
  EXPECT_EQ(tool.line(), "A3 On: on 100 %");
  EXPECT_TRUE(client.transmit(0x4E, 0x64));
  EXPECT_EQ(tool.line(), "A3 Dim 9/22: on 59 %");

  tool.type("remote B2 on");
  EXPECT_EQ(tool.line(), "B2 On: on 100 % (remote)");
  EXPECT_EQ(client.next(), 0x5A);
  tool.type("quit");
  EXPECT_EQ(tool.wait_for_end(), 0);
}

// An adapter that is pulled out is gone for the client, and comes back under another name.
TEST(Tool, UnplugAndPlug) {
  const std::string link = testing::TempDir() + "emulator_link_" + std::to_string(getpid());
  Tool tool({"--fast", "--link", link});
  const std::string path = tool.line();
  EXPECT_EQ(std::filesystem::read_symlink(link), path);
  {
    Client client(link);
    EXPECT_TRUE(client.transmit(0x04, 0x62));
    tool.type("unplug");
    EXPECT_EQ(tool.line(), "unplugged");
    EXPECT_TRUE(client.sees_loss());
  }
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  tool.type("plug");
  const std::string plugged = tool.line();
  EXPECT_TRUE(plugged.starts_with("plugged in as /"));
  EXPECT_EQ(plugged.find(path, 14), std::string::npos) << plugged << " after " << path;
  Client client(link);
  EXPECT_TRUE(client.transmit(0x06, 0x62)) << "the interface still knows the address";
  EXPECT_EQ(tool.line(), "A3 On: on 100 %");
  tool.terminate();
  EXPECT_EQ(tool.wait_for_end(), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link)) << "nothing is left behind";
}

// A file of the user's must not be replaced by a link.
TEST(Tool, RefusesALinkWhereSomethingElseIsAndBadOptions) {
  Tool onto_folder({"--link", testing::TempDir()});
  EXPECT_EQ(onto_folder.wait_for_end(), 1);
  EXPECT_TRUE(std::filesystem::is_directory(testing::TempDir()));
  EXPECT_EQ(Tool({"--mains", "55"}).wait_for_end(), 2);
  EXPECT_EQ(Tool({"--fault", "nothing"}).wait_for_end(), 2);
}

}  // namespace
