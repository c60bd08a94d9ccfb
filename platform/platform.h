#pragma once

#include <filesystem>
#include <string>

namespace homewarden {

class Desktop;
class Dialogs;
class EventLoop;
class Files;
class InterfaceControl;
class JsonCodec;
class LogonEntry;
class Registry;
class ServiceControl;
class ServiceInstaller;
class SingleInstance;
class SoundPlayer;
class SpeechAgent;
class WebServerControl;
class WindowCall;

// What running a house needs of the world, gathered by whoever starts it.
struct HousePlatform {
  EventLoop& loop;
  Files& files;
  Registry& registry;
  ServiceControl& services;
  SingleInstance& instance;     // of this program
  SingleInstance& counterpart;  // of the service where this is the window, and the reverse
  InterfaceControl& interface_control;
  Dialogs& dialogs;
  WebServerControl& web;
  const JsonCodec& json;

  std::filesystem::path folder;     // the application folder: data files, html/, sounds
  std::string windows_folder;       // where the service tools lie; "" where there are none
  std::string folder_trouble = {};  // what is wrong with the application folder, for a person
};

// What a program with a window needs.
struct Platform : HousePlatform {
  WindowCall& window_call;
  Desktop& desktop;
  SoundPlayer& sounds;
  ServiceInstaller& installer;
  LogonEntry& logon_entry;
  SpeechAgent& speech;
};

}  // namespace homewarden
