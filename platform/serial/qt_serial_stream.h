#pragma once

#include <QObject>
#include <memory>

#include "platform/cm11/byte_stream.h"
#include "platform/linux/port_names.h"
#include "platform/linux/port_permissions.h"

class QSerialPort;

namespace homewarden::serial {

// A serial port of this machine, or a pseudo-terminal that stands for one.
class QtSerialStream : public cm11::ByteStream {
 public:
  explicit QtSerialStream(os_linux::PortNames names);
  ~QtSerialStream() override;

  bool open(int port) override;
  void close() override;
  bool is_open() const override;
  void write(std::string_view bytes) override;
  std::vector<int> present_ports() override { return names_.present(); }
  std::string refused_ports() override { return os_linux::refused_ports(names_); }

 private:
  void read();
  void lose();

  os_linux::PortNames names_;
  std::unique_ptr<QSerialPort> port_;
  // Calls that wait in the event queue go with it.
  QObject context_;
};

}  // namespace homewarden::serial
