#include "platform/http/self_signed_files.h"

#include <algorithm>
#include <vector>

#include "base/code_page.h"
#include "base/text.h"
#include "platform/http/host_name.h"
#include "platform/http/self_signed.h"

namespace homewarden::http {
namespace {

std::vector<std::string> names_of(WebHost& host) {
  std::vector<std::string> names;
  const auto add = [&names](const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  };
  // The first is what the certificate is called.
  for (const std::string& given : host.machine_names()) {
    const std::string name = to_lower(given);
    if (!is_host_name(name)) continue;
    add(name);
    if (name.find('.') == std::string::npos) add(name + ".local");
  }
  add("localhost");
  for (const std::string& address : host.network_addresses()) add(address);
  add("127.0.0.1");
  add("::1");
  return names;
}

std::filesystem::path unfinished(std::filesystem::path file) {
  return file += ".new";
}

std::string not_written(const std::filesystem::path& file) {
  return "The file " + from_utf8(file.string()) +
         " could not be written. Please check its folder and the disk.";
}

}  // namespace

std::string write_self_signed(WebHost& host, const std::filesystem::path& certificate,
                              const std::filesystem::path& key, int days) {
  const SelfSigned made = make_self_signed(names_of(host), std::chrono::system_clock::now(), days);
  if (made.key.empty()) return "The certificate could not be made.";
  Files& files = host.files();
  std::error_code ignored;  // writing tells
  for (const auto& file : {certificate, key})
    std::filesystem::create_directories(file.parent_path(), ignored);
  // Both are whole on the disk before the first takes its place.
  std::string trouble;
  if (!files.write_secret(unfinished(key), made.key))
    trouble = not_written(key);
  else if (!files.write(unfinished(certificate), made.certificate))
    trouble = not_written(certificate);
  else if (!files.rename(unfinished(key), key))
    trouble = not_written(key);
  else if (!files.rename(unfinished(certificate), certificate))
    trouble = not_written(certificate);
  if (trouble.empty()) return "";
  for (const auto& file : {certificate, key}) files.remove(unfinished(file));
  return trouble;
}

}  // namespace homewarden::http
