#pragma once

#include <string>
#include <vector>

#include "platform/logon_entry.h"
#include "platform/service_control.h"
#include "platform/service_installer.h"

namespace homewarden::testing {

class FakeServices : public ServiceControl {
 public:
  ServiceState query(const std::string&, const std::string&) override { return state; }
  void start(const std::string&, const std::string& service) override {
    calls.push_back("start " + service);
    if (obeys) state = ServiceState::kRunning;
  }
  void stop(const std::string&, const std::string& service) override {
    calls.push_back("stop " + service);
    if (obeys) state = ServiceState::kStopped;
  }

  ServiceState state = ServiceState::kUnknown;
  bool obeys = true;
  std::vector<std::string> calls;
};

// Installs the service of `services`.
class FakeInstaller : public ServiceInstaller {
 public:
  explicit FakeInstaller(FakeServices& services) : services_(services) {}

  bool is_available() const override { return available; }
  void install() override { change("install", ServiceState::kUnknown, ServiceState::kStopped); }
  void remove() override { change("remove", ServiceState::kStopped, ServiceState::kUnknown); }

  bool available = true;
  std::string failure;  // of the calls that follow

 private:
  void change(const std::string& call, ServiceState from, ServiceState to) {
    services_.calls.push_back(call);
    if (failure.empty() && services_.state == from) services_.state = to;
    reported(failure);
  }

  FakeServices& services_;
};

class FakeLogonEntry : public LogonEntry {
 public:
  bool is_available() const override { return available; }
  bool is_switched_off() override { return switched_off; }
  bool fill() override { return put("filled"); }
  bool clear() override { return put("empty"); }

  bool available = true;
  bool switched_off = false;
  bool writable = true;
  std::string content = "missing";

 private:
  bool put(const std::string& text) {
    if (writable) content = text;
    return writable;
  }
};

}  // namespace homewarden::testing
