#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/http/tls_certificate.h"

namespace homewarden::http {

// The certificate and its key, as two files (or one that holds both) that are renewed by whoever
// issues them.
class CertificateFiles {
 public:
  using Time = TlsCertificate::Time;

  CertificateFiles(Files& files, std::filesystem::path certificate, std::filesystem::path key);

  // Looks whether the files were renewed, and takes them when they can be used: of the first ones
  // it is enough that they belong together, those that come later must be good at the time, or the
  // ones before stay.
  void look(Time now);

  // Nothing before look(), and while none could be used.
  const std::shared_ptr<const TlsCertificate>& current() const { return current_; }
  // What is wrong with the files, or with the one that is used, in whole sentences; "" for nothing.
  std::string trouble(Time now) const;

 private:
  struct Stamps {
    std::optional<FileStamp> certificate;
    std::optional<FileStamp> key;
  };

  void load(Time now);
  std::string read(const std::filesystem::path& file, const char* what, std::string& text) const;

  Files& files_;
  const std::filesystem::path certificate_;
  const std::filesystem::path key_;
  Stamps seen_;  // nothing while a change might go unnoticed
  std::shared_ptr<const TlsCertificate> current_;
  std::string fault_;  // of the files as they were read last
};

}  // namespace homewarden::http
