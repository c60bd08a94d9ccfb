#pragma once

#include <filesystem>
#include <utility>

#include "platform/json/nlohmann_json.h"
#include "platform/platform.h"
#include "tests/platform/fake_desktop.h"
#include "tests/platform/fake_interface.h"
#include "tests/platform/fake_services.h"
#include "tests/platform/fake_speech.h"
#include "tests/platform/fake_web.h"
#include "tests/platform/memory_files.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"

namespace homewarden::testing {

// Everything that the program needs of the world, in memory and on a virtual clock.
struct FakeWorld {
  HousePlatform house_platform(std::filesystem::path folder) {
    return {loop,       *used_files,   registry, services, instance,          counterpart,
            *connected, *used_dialogs, web,      json,     std::move(folder), ""};
  }
  Platform platform(std::filesystem::path folder) {
    return {house_platform(std::move(folder)),
            window_call,
            desktop,
            sounds,
            installer,
            logon_entry,
            *used_speech};
  }

  VirtualLoop loop;
  MemoryFiles files;
  MemoryRegistry registry;
  FakeServices services;
  FakeInstaller installer{services};
  FakeLogonEntry logon_entry;
  FakeInstance instance;
  FakeWindowCall window_call;
  FakeInstance counterpart;
  FakeInterface interface_control{loop};
  FakeDialogs dialogs{loop};
  FakeDesktop desktop;
  FakeSounds sounds;
  FakeSpeech speech;
  FakeWeb web;
  json::NlohmannJson json;

  // What may be something else for the platform that comes next.
  Files* used_files = &files;
  Dialogs* used_dialogs = &dialogs;
  SpeechAgent* used_speech = &speech;
  InterfaceControl* connected = &interface_control;
};

}  // namespace homewarden::testing
