#include "platform/http/certificate_files.h"

#include <utility>

#include "base/code_page.h"

namespace homewarden::http {
namespace {

constexpr std::uintmax_t kLargest = 256 * 1024;
constexpr std::chrono::days kSoon{14};

bool is_good(const TlsCertificate& certificate, TlsCertificate::Time now) {
  return certificate.from() <= now && now < certificate.until();
}

std::string fault_in_time(const TlsCertificate& certificate, TlsCertificate::Time now) {
  if (now >= certificate.until())
    return "The certificate was good until " + date_of(certificate.until()) + " only.";
  if (now < certificate.from())
    return "The certificate is good from " + date_of(certificate.from()) +
           " on: please check this machine's date.";
  return "";
}

}  // namespace

CertificateFiles::CertificateFiles(Files& files, std::filesystem::path certificate,
                                   std::filesystem::path key)
    : files_(files), certificate_(std::move(certificate)), key_(std::move(key)) {}

void CertificateFiles::look(Time now) {
  const Stamps stamps{files_.stamp(certificate_), files_.stamp(key_)};
  const bool same = stamps.certificate && stamps.key && stamps.certificate == seen_.certificate &&
                    stamps.key == seen_.key;
  // A renewed one whose time has not come is looked at again.
  if (same && fault_.empty()) return;
  seen_ = stamps;
  load(now);
}

void CertificateFiles::load(Time now) {
  std::string certificate;
  std::string key;
  fault_ = read(certificate_, "certificate", certificate);
  if (fault_.empty()) fault_ = read(key_, "key", key);
  if (!fault_.empty()) return;
  auto read = TlsCertificate::read(certificate, key);
  if (auto* fault = std::get_if<std::string>(&read)) {
    fault_ = std::move(*fault);
    return;
  }
  auto found = std::get<std::shared_ptr<const TlsCertificate>>(std::move(read));
  if (current_ && current_->fingerprint() != found->fingerprint() && !is_good(*found, now)) {
    fault_ = fault_in_time(*found, now);
    return;
  }
  current_ = std::move(found);
}

// "", or why it cannot be read.
std::string CertificateFiles::read(const std::filesystem::path& file, const char* what,
                                   std::string& text) const {
  const std::string name = from_utf8(file.string());
  if (file.empty()) return "No file is named for the " + std::string(what) + ".";
  std::error_code error;
  const bool fits = std::filesystem::is_regular_file(file, error) &&
                    std::filesystem::file_size(file, error) <= kLargest;
  const auto content = fits && !error ? files_.read(file) : std::nullopt;
  if (!content) return "The " + std::string(what) + " " + name + " cannot be read.";
  text = *content;
  return "";
}

std::string CertificateFiles::trouble(Time now) const {
  if (!current_) return fault_;
  if (!fault_.empty())
    return "The renewed certificate cannot be used, the one before goes on until " +
           date_of(current_->until()) + ". " + fault_;
  if (!is_good(*current_, now)) return fault_in_time(*current_, now);
  if (current_->until() - now < kSoon)
    return "The certificate is good until " + date_of(current_->until()) + " only: renew it.";
  return "";
}

}  // namespace homewarden::http
