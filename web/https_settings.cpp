#include "web/https_settings.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "base/code_page.h"
#include "base/text.h"
#include "core/asking.h"

namespace homewarden {
namespace {

const std::string kSection = "data";
const std::string kNotice = "https";
const std::string kDefaultPort = "8443";
constexpr const char* kUsualPort = "443";
constexpr int kDays = 825;  // browsers take none for longer

struct PlainChoice {
  WebHttps::Plain plain;
  const char* stored;
  const char* shown;
};

constexpr std::array<PlainChoice, 3> kPlainChoices{{
    {WebHttps::Plain::kAtHome, "home", kPlainAtHome},
    {WebHttps::Plain::kAsBefore, "before", kPlainAnswered},
    {WebHttps::Plain::kRedirect, "redirect", kPlainSentOn},
}};

// Unknown ones are the first.
const PlainChoice& choice(const std::string& text, const char* PlainChoice::*as) {
  for (const PlainChoice& entry : kPlainChoices)
    if (text == entry.*as) return entry;
  return kPlainChoices.front();
}

const PlainChoice& choice(WebHttps::Plain plain) {
  for (const PlainChoice& entry : kPlainChoices)
    if (plain == entry.plain) return entry;
  return kPlainChoices.front();
}

std::filesystem::path path_in(const std::string& text) {
  return to_utf8(trim_blanks(text));
}

std::string text_of(const std::filesystem::path& path) {
  return from_utf8(path.string());
}

// "house.local, 192.168.1.2" apart.
std::vector<std::string> names_in(const std::string& names) {
  std::vector<std::string> entries(1);
  for (const char c : names) {
    if (c == ',')
      entries.emplace_back();
    else if (c != ' ')
      entries.back() += c;
  }
  return entries;
}

// It has no place where a narrow window could break it.
std::string in_two_lines(const std::string& fingerprint) {
  const std::size_t half = fingerprint.size() / 2 + 1;
  if (half >= fingerprint.size()) return fingerprint;
  return fingerprint.substr(0, half) + "\n" + fingerprint.substr(half);
}

// As it stands in an address.
std::string bracketed(const std::string& host) {
  const bool is_v6 = host.find(':') != std::string::npos && !host.starts_with('[');
  return is_v6 ? "[" + host + "]" : host;
}

}  // namespace

HttpsSettings::HttpsSettings(WebPanel& panel, Settings& settings, Dialogs& dialogs, Files& files,
                             Notices& notices, WebServerControl& web,
                             std::filesystem::path documents)
    : panel_(panel),
      settings_(settings),
      dialogs_(dialogs),
      files_(files),
      notices_(notices),
      web_(web),
      documents_(std::move(documents)),
      certificate_(documents_.parent_path() / "https" / "certificate.pem"),
      key_(documents_.parent_path() / "https" / "key.pem") {}

WebHttps HttpsSettings::stored() const {
  const auto is_on = [this](const char* key) { return settings_.read(kSection, key, "0") == "1"; };
  WebHttps https;
  https.on = is_on("webhttps");
  https.port = settings_.read(kSection, "webhttpsport", kDefaultPort);
  https.certificate = path_in(settings_.read(kSection, "webcert", ""));
  https.key = path_in(settings_.read(kSection, "webkey", ""));
  https.plain = choice(settings_.read(kSection, "webplain", ""), &PlainChoice::stored).plain;
  https.hsts = is_on("webhsts");
  https.plain_password = is_on("webplainpassword");
  return https;
}

void HttpsSettings::show() {
  const WebHttps https = stored();
  panel_.chk_webhttps.checked = https.on;
  panel_.txt_webhttpsport.text = https.port;
  panel_.txt_webcert.text = text_of(https.certificate);
  panel_.txt_webkey.text = text_of(https.key);
  panel_.com_webplain.text = choice(https.plain).shown;
  panel_.chk_webhsts.checked = https.hsts;
  panel_.chk_webplainpassword.checked = https.plain_password;
}

void HttpsSettings::show_state() {
  const WebHttpsState state = web_.HttpsState();
  notices_.tell(kNotice,
                state.trouble.empty() ? "" : state.trouble + " The panel \"Web Server\" has more.");
  std::string text = "Passwords and what is switched go through the network for all to read.";
  if (state.listening) text = "The pages are answered over https.";
  if (!state.trouble.empty()) text = state.trouble;
  panel_.lab_webhttps.caption = text;
  panel_.lab_webcert.visible = !state.fingerprint.empty();
  panel_.lab_webcert.caption = "For " + (state.names.empty() ? "no name" : state.names) +
                               "\nGood until " + state.until + "\nSHA-256 " +
                               in_two_lines(state.fingerprint);
}

std::string HttpsSettings::address(const std::string& host) const {
  const WebHttpsState state = web_.HttpsState();
  if (!state.listening) return "";
  std::string called;
  for (const std::string& name : names_in(state.names)) {
    if (name == host) called = name;
    if (called.empty() && name.find('*') == std::string::npos) called = name;
  }
  const std::string port(trim_blanks(stored().port));
  return "https://" + bracketed(called.empty() ? host : called) +
         (port == kUsualPort ? "" : ":" + port);
}

WebHttps HttpsSettings::typed() const {
  WebHttps https;
  https.on = panel_.chk_webhttps.checked;
  https.port = std::string(trim_blanks(panel_.txt_webhttpsport.text.get()));
  https.certificate = path_in(panel_.txt_webcert.text);
  https.key = path_in(panel_.txt_webkey.text);
  https.plain = choice(panel_.com_webplain.text, &PlainChoice::shown).plain;
  https.hsts = panel_.chk_webhsts.checked;
  https.plain_password = panel_.chk_webplainpassword.checked;
  return https;
}

// Files are looked at only when they are wanted: whoever turns it off may have none any more.
std::string HttpsSettings::fault(const WebHttps& https, const std::string& plain_port) const {
  if (!https.on) return "";
  if (https.port == trim_blanks(plain_port))
    return "Port " + https.port + " is that of the pages without https: it needs one of its own.";
  for (const auto& [what, file] :
       {std::pair{"certificate", &https.certificate}, {"key", &https.key}})
    if (!file->empty() && file->is_relative())
      return "The " + std::string(what) + " needs its whole path, which begins with /.";
  if (is_served(https.key))
    return "The key lies in the folder of the pages, where everybody can fetch it: with it they "
           "could pass for this house.";
  return web_.HttpsFault(https);
}

// Also by way of a link to the folder.
bool HttpsSettings::is_served(const std::filesystem::path& file) const {
  std::error_code ignored;  // paths that lead nowhere are compared as they are written
  const auto folder = std::filesystem::weakly_canonical(documents_, ignored);
  const auto whole = std::filesystem::weakly_canonical(file, ignored);
  return std::mismatch(folder.begin(), folder.end(), whole.begin(), whole.end()).first ==
         folder.end();
}

Task<bool> HttpsSettings::store(std::string plain_port) {
  const WebHttps https = typed();
  const std::string reason = fault(https, plain_port);
  if (!reason.empty()) {
    co_await tell_error(
        dialogs_, "Sorry, https cannot be had like this. " + reason + " Nothing has been saved.");
    co_return false;
  }
  const auto write = [this](const char* key, const std::string& text) {
    settings_.write(kSection, key, text);
  };
  write("webhttps", https.on ? "1" : "0");
  write("webhttpsport", https.port);
  write("webcert", text_of(https.certificate));
  write("webkey", text_of(https.key));
  write("webplain", choice(https.plain).stored);
  write("webhsts", https.hsts ? "1" : "0");
  write("webplainpassword", https.plain_password ? "1" : "0");
  co_return true;
}

bool HttpsSettings::is_foreign(const std::filesystem::path& file) const {
  if (!files_.exists(file)) return false;
  const auto content = files_.read(file);
  return !content || !content->starts_with(kMadeHere);
}

Task<void> HttpsSettings::make() {
  if (is_foreign(certificate_) || is_foreign(key_)) {
    co_await tell_error(
        dialogs_, "Sorry, the files " + text_of(certificate_) + " and " + text_of(key_) +
                      " were not made here. They are not overwritten: please move them away.");
    co_return;
  }
  if (files_.exists(certificate_)) {
    const bool sure = co_await ask(
        dialogs_,
        "There is a certificate already. With another one every browser asks once more whether it "
        "is to be trusted. Do you really want to make another one?",
        "Sure?");
    if (!sure) co_return;
  }
  const std::string trouble = web_.make_certificate(certificate_, key_, kDays);
  if (!trouble.empty()) {
    co_await tell_error(dialogs_, "Sorry, there is no new certificate. " + trouble);
    co_return;
  }
  panel_.txt_webcert.text = text_of(certificate_);
  panel_.txt_webkey.text = text_of(key_);
  panel_.chk_webhttps.checked = true;
  co_await tell(dialogs_,
                "The certificate has been made. Save HTTPS to use it; browsers warn of it, as "
                "nobody but this house vouches for it.",
                "Made");
}

}  // namespace homewarden
