#include "platform/linux/autostart_entry.h"

#include <string_view>
#include <system_error>

#include "base/lines.h"
#include "platform/linux/folders.h"

namespace homewarden::os_linux {
namespace {

// A value of type string (Desktop Entry Specification, "Possible value types").
std::string string_value(std::string_view text) {
  std::string value;
  for (const char c : text) {
    switch (c) {
      case '\\':
        value += "\\\\";
        break;
      case '\n':
        value += "\\n";
        break;
      case '\r':
        value += "\\r";
        break;
      case '\t':
        value += "\\t";
        break;
      case ' ':
        value += value.empty() ? "\\s" : " ";  // blanks at the start are left out by readers
        break;
      default:
        value += c;
    }
  }
  return value;
}

// An argument of Exec in quotes, before it becomes a string value ("The Exec key").
std::string exec_argument(std::string_view argument) {
  std::string text = "\"";
  for (const char c : argument) {
    if (c == '"' || c == '`' || c == '$' || c == '\\') text += '\\';
    if (c == '%') text += '%';  // else a field code
    text += c;
  }
  return text + "\"";
}

std::string entry(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::vector<std::string>& environment) {
  std::string command = environment.empty() ? "" : "env ";
  for (const std::string& variable : environment) command += exec_argument(variable) + " ";
  command += exec_argument(program.string());
  for (const std::string& argument : arguments) command += " " + exec_argument(argument);
  return "[Desktop Entry]\nType=Application\nName=Homewarden\n"
         "Comment=Switch, dim and time lamps and appliances over the power line\n"
         "Exec=" +
         string_value(command) + "\nTryExec=" + string_value(program.string()) +
         "\nIcon=homewarden\nTerminal=false\n";
}

}  // namespace

std::filesystem::path autostart_folder() {
  return config_home() / "autostart";
}

AutostartEntry::AutostartEntry(const std::filesystem::path& folder,
                               const std::filesystem::path& program,
                               const std::vector<std::string>& arguments,
                               const std::vector<std::string>& environment)
    : file_(folder / "homewarden.desktop"), content_(entry(program, arguments, environment)) {}

bool AutostartEntry::is_switched_off() {
  const auto content = files_.read(file_);
  if (!content) return false;
  LineReader reader(*content);
  while (const auto line = reader.next())
    if (*line == "Hidden=true" || *line == "X-GNOME-Autostart-enabled=false") return true;
  return false;
}

bool AutostartEntry::fill() {
  return put(content_);
}

bool AutostartEntry::clear() {
  return put("");
}

bool AutostartEntry::put(const std::string& content) {
  if (files_.read(file_) == content) return true;
  std::error_code error;
  std::filesystem::create_directories(file_.parent_path(), error);
  std::filesystem::path unfinished = file_;
  unfinished += ".new";
  if (files_.write(unfinished, content) && files_.rename(unfinished, file_)) return true;
  files_.remove(unfinished);
  return false;
}

}  // namespace homewarden::os_linux
