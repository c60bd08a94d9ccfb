#include "app/common/status_printer.h"

#include "platform/qt/text_codec.h"

namespace homewarden {

void print_line(os_linux::LineOutput& output, const std::string& text) {
  if (text.empty()) return;
  output.print(qt::from_code_page(text).toLocal8Bit().toStdString());
}

void print_changes(os_linux::LineOutput& output, Property<std::string>& text) {
  text.changed.connect([&output, &text] { print_line(output, text); });
}

void print_status_lines(os_linux::LineOutput& output, StatusBar& status) {
  for (Property<std::string>* text : {&status.panel2, &status.panel3, &status.panel3_tip})
    print_changes(output, *text);
}

}  // namespace homewarden
