#pragma once

#include <unistd.h>

#include <QSocketNotifier>
#include <filesystem>
#include <memory>
#include <string>

#include "core/program/program.h"
#include "core/settings.h"
#include "platform/cm11/driver.h"
#include "platform/http/http_server.h"
#include "platform/json/nlohmann_json.h"
#include "platform/linux/linux_web_host.h"
#include "platform/linux/posix_files.h"
#include "platform/no_speech_agent.h"
#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "platform/store/sqlite_registry.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_services.h"
#include "tools/emulator/pty_host.h"
#include "ui/qt/main_window_view.h"

namespace homewarden {

// The whole program on a pseudo-terminal, with its real store, server and window, in a folder of
// its own that goes with it. The web server listens on loopback only.
class WholeProgram {
 public:
  // The event loop of the program, whose clock shows noon and these minutes once they are set.
  class Loop : public qt::QtLoop {
   public:
    std::optional<int> minutes_past_noon;
    LocalTime local_time() const override {
      LocalTime time = QtLoop::local_time();
      if (!minutes_past_noon) return time;
      time.hour = 12;
      time.minute = *minutes_past_noon;
      return time;
    }
  };

  // `mains_speed` as Options::speed of the emulator.
  WholeProgram(const std::string& room_list, const char* web_port, double mains_speed)
      : emulator_([mains_speed] {
          emulator::Options options;
          options.speed = mains_speed;
          return options;
        }()) {
    std::filesystem::create_directories(folder_ / "ports");
    files_.write(folder_ / "rmlst.hwd", room_list);
    set("port", "1");
    set("webport", web_port);
  }
  ~WholeProgram() { std::filesystem::remove_all(folder_); }
  WholeProgram(const WholeProgram&) = delete;
  WholeProgram& operator=(const WholeProgram&) = delete;

  // Plugs the interface in, shows the window and starts the program.
  void start() {
    if (const std::string error = host_.plug(); !error.empty()) std::printf("%s\n", error.c_str());
    readable_ = std::make_unique<QSocketNotifier>(host_.fd(), QSocketNotifier::Read);
    QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(),
                     [this] { host_driver_.readable(); });
    view_.show();
    program_.start();
  }

  void write(const char* file, const std::string& content) {
    files_.write(folder_ / file, content);
  }
  void set(const char* name, const char* text) {
    registry_.write(RegistryRoot::kLocalMachine, kMachineKey, name, {RegistryType::kString, text});
  }

  Loop& loop() { return loop_; }
  // Its on_bytes is told what passes on the serial line.
  emulator::PtyHost& line() { return host_; }
  FrmMain& form() { return program_.frm_main; }
  view::MainWindowView& view() { return view_; }

 private:
  const std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("homewarden_bench_" + std::to_string(::getpid()));
  Loop loop_;
  os_linux::PosixFiles files_;
  store::SqliteRegistry registry_{folder_, folder_};
  emulator::Emulator emulator_;
  emulator::PtyHost host_{emulator_, (folder_ / "ports" / "com1").string()};
  emulator::PtyHostDriver host_driver_{loop_, host_};
  std::unique_ptr<QSocketNotifier> readable_;
  serial::QtSerialStream stream_{
      os_linux::PortNames(folder_, os_linux::PortNames::Devices::kLinksOnly)};
  cm11::Driver driver_{loop_, stream_};
  testing::FakeServices services_;
  testing::FakeInstaller installer_{services_};
  testing::FakeLogonEntry logon_entry_;
  NoSpeechAgent speech_{"not measured here"};
  testing::FakeInstance instance_;
  testing::FakeWindowCall window_call_;
  testing::FakeInstance counterpart_;
  testing::FakeDialogs dialogs_{loop_};
  testing::FakeDesktop desktop_;
  testing::FakeSounds sounds_;
  os_linux::LinuxWebHost web_host_;
  json::NlohmannJson json_;
  http::HttpServer web_{loop_, web_host_,
                        [this](int descriptor, std::function<void()> function) {
                          loop_.watch_readable(descriptor, std::move(function));
                        },
                        [] {
                          http::HttpLimits limits;
                          limits.address = "127.0.0.1";
                          return limits;
                        }()};
  Program program_{{{loop_, files_, registry_, services_, instance_, counterpart_, driver_,
                     dialogs_, web_, json_, folder_, ""},
                    window_call_,
                    desktop_,
                    sounds_,
                    installer_,
                    logon_entry_,
                    speech_},
                   [](std::exception_ptr error) { std::rethrow_exception(error); }};
  view::MainWindowView view_{program_.frm_main};
};

}  // namespace homewarden
