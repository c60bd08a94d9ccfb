#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "core/program/program.h"
#include "core/settings.h"
#include "tests/platform/fake_world.h"

namespace homewarden::testing {

using namespace std::chrono_literals;

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
  }

  // Starts the program; what escapes from an operation fails the test.
  Program& open() {
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
    return *program_;
  }

  // Opens the program and lets it find its interface.
  FrmMain& open_connected() {
    open();
    loop.advance(2s);
    interface_control.take_notes();
    return form();
  }

  void forget_program() { program_.reset(); }

  FrmMain& form() { return program_->frm_main; }
  FrmWait& wait() { return program_->frm_wait; }
  FrmSysTray& icon() { return program_->frmSysTray; }
  FrmServer& server_form() { return program_->frm_server; }
  std::string status() { return form().Statusbar.panel2; }

  void click_node(const std::string& key) {
    form().Tree.selected = form().Tree.find(key);
    form().Tree.click();
  }

  // A person moves the slider of a slot.
  void slide(std::size_t slot, int position) {
    form().image1[slot].value = position;
    form().image1[slot].moved();
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
