#pragma once

#include <filesystem>
#include <string>

#include "platform/web_host.h"

namespace homewarden::http {

// Makes a key and a certificate for the names and addresses of this machine and writes them in
// place of what the files held. Neither file is ever there in part; the key's can be read by its
// owner only. "", or why it could not be done.
std::string write_self_signed(WebHost& host, const std::filesystem::path& certificate,
                              const std::filesystem::path& key, int days);

}  // namespace homewarden::http
