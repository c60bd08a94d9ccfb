#include "platform/serial/qt_serial_stream.h"

#include <QByteArray>
#include <QIODevice>
#include <QMetaObject>
#include <QSerialPort>
#include <QString>
#include <utility>

namespace homewarden::serial {

QtSerialStream::QtSerialStream(os_linux::PortNames names) : names_(std::move(names)) {}

QtSerialStream::~QtSerialStream() {
  if (port_) port_->disconnect();
}

bool QtSerialStream::open(int port) {
  close();
  const std::string path = names_.path(port);
  if (path.empty()) return false;
  auto serial = std::make_unique<QSerialPort>();
  serial->setPortName(QString::fromStdString(path));
  serial->setBaudRate(QSerialPort::Baud4800);
  // Opening sets a lock file and the terminal's exclusive mode against other programs.
  if (!serial->open(QIODevice::ReadWrite)) return false;
  serial->clear();
  QObject::connect(serial.get(), &QSerialPort::readyRead, serial.get(), [this] { read(); });
  QObject::connect(serial.get(), &QSerialPort::errorOccurred, serial.get(),
                   [this, failed = serial.get()](QSerialPort::SerialPortError error) {
                     const bool gone = error == QSerialPort::ResourceError ||
                                       error == QSerialPort::ReadError ||
                                       error == QSerialPort::WriteError;
                     if (!gone) return;
                     // The port cannot be closed inside its own signal. Another one may be open
                     // when the call comes.
                     QMetaObject::invokeMethod(
                         &context_,
                         [this, failed] {
                           if (port_.get() == failed) lose();
                         },
                         Qt::QueuedConnection);
                   });
  port_ = std::move(serial);
  return true;
}

void QtSerialStream::close() {
  if (!port_) return;
  port_->disconnect();
  port_->close();
  // Whoever closes may have been called by the port's own signal.
  port_.release()->deleteLater();
}

bool QtSerialStream::is_open() const {
  return port_ != nullptr;
}

void QtSerialStream::write(std::string_view bytes) {
  if (port_) port_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

void QtSerialStream::read() {
  const QByteArray bytes = port_->readAll();
  if (!bytes.isEmpty()) Received({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

void QtSerialStream::lose() {
  close();
  Lost();
}

}  // namespace homewarden::serial
