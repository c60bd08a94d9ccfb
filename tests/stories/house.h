#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/program/program.h"
#include "core/settings.h"
#include "tests/platform/fake_world.h"

namespace homewarden::testing {

using namespace std::chrono_literals;
using ::testing::Contains, ::testing::Each, ::testing::ElementsAre, ::testing::EndsWith;
using ::testing::HasSubstr, ::testing::IsEmpty, ::testing::IsSupersetOf, ::testing::Not;
using ::testing::NotNull, ::testing::Pair, ::testing::SizeIs, ::testing::StartsWith;
using Texts = std::vector<std::string>;

// A house with the whole program in it, on a virtual clock. Nothing runs before `open()`.
class House : public FakeWorld {
 public:
  static constexpr const char* kFolder = "/house";

  explicit House(const std::string& room_list =
                     "Kitchen~~~\r\nKitchen~Table Lamp~A~3\r\nKitchen~Kettle~A~4\r\n"
                     "Hall~~~\r\nHall~Lamp~B~12\r\n") {
    if (!room_list.empty()) files.contents[file("rmlst.hwd")] = room_list;
    interface_control.status_of_port[2] = 0;
    set_machine("port", "2");
    settings.write("type", "KitchenTableLamp", "bulb");
    settings.write("type", "HallLamp", "bulb2");
    settings.write("data", "run1", "True");  // not new to this person
  }

  // Starts the program; what escapes from an operation fails the test.
  Program& open(std::optional<std::chrono::milliseconds> length = {}) {
    program_ = std::make_unique<Program>(platform(kFolder), [](std::exception_ptr error) {
      try {
        std::rethrow_exception(error);
      } catch (const std::exception& what) {
        ADD_FAILURE() << "an operation ended with: " << what.what();
      }
    });
    program_->frm_main.Statusbar.panel2.changed.connect(
        [this] { status_texts.push_back(form().Statusbar.panel2); });
    program_->frm_wait.Label1.caption.changed.connect(
        [this] { wait_texts.push_back(program_->frm_wait.Label1.caption); });
    program_->start();
    if (length) loop.advance(*length);
    return *program_;
  }

  // Opens the program and lets it find its interface.
  FrmMain& open_connected() {
    open();
    loop.advance(2s);
    interface_control.take_notes();
    return form();
  }

  // On the day on which the clock starts.
  FrmMain& open_connected_at(int hour, int minute, int second = 0, int millisecond = 0) {
    loop.set_wall_clock(2023, 6, 21, hour, minute, second, millisecond);
    return open_connected();
  }

  void forget_program() { program_.reset(); }

  FrmMain& form() { return program_->frm_main; }
  FrmWait& wait() { return program_->frm_wait; }
  FrmSysTray& icon() { return program_->frmSysTray; }
  FrmServer& server_form() { return program_->frm_server; }
  // What went to the power line since the last call.
  Texts notes() { return interface_control.take_notes(); }
  std::string& content(const std::string& name) { return files.contents[file(name)]; }
  Texts line() { return interface_control.take_line_log(); }
  std::string status() { return form().Statusbar.panel2; }

  using Time = std::chrono::milliseconds;

  // What a person or the power line does; then the house goes on for a time.
  template <class Control>
  void click(Control& control, Time length = 0ms) {
    control.click();
    loop.advance(length);
  }
  template <class Control>
  void press(Control& control, int key, Time length = 0ms) {
    control.key_press(key);
    loop.advance(length);
  }
  void click_node(const std::string& key, Time length = 0ms) {
    form().Tree.selected = form().Tree.find(key);
    click(form().Tree, length);
  }
  // Moves the slider of a slot.
  void slide(std::size_t slot, int position, Time length = 0ms) {
    form().image1[slot].value = position;
    form().image1[slot].moved();
    loop.advance(length);
  }
  void receive(const std::string& address, int function, Time length = 0ms) {
    interface_control.CommandReceived(address, function);
    loop.advance(length);
  }
  void close(Time length = 0ms) {
    form().close_requested();
    loop.advance(length);
  }

  std::string machine(const std::string& name) {
    const auto value = registry.read(RegistryRoot::kLocalMachine, kMachineKey, name);
    return value ? value->data : "(none)";
  }
  void set_machine(const std::string& name, const std::string& text) {
    registry.write(RegistryRoot::kLocalMachine, kMachineKey, name, {RegistryType::kString, text});
  }
  void set_delayed() {
    registry.write(RegistryRoot::kLocalMachine, kDelayKey, "Homewardendelay",
                   {RegistryType::kString, "delayed"});
  }

  static std::filesystem::path file(const std::string& name) {
    return std::filesystem::path(kFolder) / name;
  }

  Settings settings{registry};
  std::vector<std::string> status_texts;
  std::vector<std::string> wait_texts;

 private:
  std::unique_ptr<Program> program_;
};

}  // namespace homewarden::testing
