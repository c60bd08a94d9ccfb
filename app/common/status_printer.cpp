#include "app/common/status_printer.h"

#include "app/common/standard_output.h"
#include "platform/qt/text_codec.h"

namespace homewarden {

void print_line(const std::string& text) {
  if (text.empty()) return;
  standard_output().print(qt::from_code_page(text).toLocal8Bit().toStdString());
}

void print_status_lines(StatusBar& status) {
  status.panel2.changed.connect([&status] { print_line(status.panel2); });
  status.panel3.changed.connect([&status] { print_line(status.panel3); });
  status.panel3_tip.changed.connect([&status] { print_line(status.panel3_tip); });
}

}  // namespace homewarden
