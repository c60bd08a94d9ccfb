#pragma once

#include <filesystem>
#include <string>

namespace homewarden {

class Desktop;
class Dialogs;
class EventLoop;
class Files;
class InterfaceControl;
class Registry;
class ServiceControl;
class SingleInstance;
class SoundPlayer;
class WebServerControl;
class WindowCall;

// Everything the program needs of the world, gathered by whoever starts it.
struct Platform {
  EventLoop& loop;
  Files& files;
  Registry& registry;
  ServiceControl& services;
  SingleInstance& instance;     // of this program
  SingleInstance& counterpart;  // of the service where this is the window, and the reverse
  WindowCall& window_call;
  InterfaceControl& interface_control;
  Dialogs& dialogs;
  Desktop& desktop;
  SoundPlayer& sounds;
  WebServerControl& web;

  std::filesystem::path folder;  // the application folder: data files, html/, sounds
  std::string windows_folder;    // where the service tools lie; "" where there are none
};

}  // namespace homewarden
