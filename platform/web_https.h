#pragma once

#include <filesystem>
#include <string>

namespace homewarden {

// The first line of the certificates and keys that make_certificate() makes: it tells them from
// files of others, and readers of PEM pass it over.
inline constexpr const char* kMadeHere = "Made by Homewarden";

// How the web server is reached over TLS.
struct WebHttps {
  // What is answered without TLS.
  enum class Plain {
    kAsBefore,  // as if there were no TLS
    kAtHome,    // this machine and the networks at home; others are sent to https
    kRedirect,  // nobody: everybody is sent to https
  };

  bool on = false;
  std::string port = "8443";
  std::filesystem::path certificate{};  // PEM, with the chain behind it
  std::filesystem::path key{};          // PEM
  Plain plain = Plain::kAtHome;
  bool hsts = false;  // tells browsers to come by https alone for a year
  // Whether passwords and tokens are taken without TLS from outside the networks at home.
  bool plain_password = false;
};

struct WebHttpsState {
  bool listening = false;
  std::string trouble{};  // why not, or what is wrong with a renewed certificate; whole sentences
  std::string names{};    // that the certificate is for
  std::string until{};    // its last day, "2027-11-24"
  std::string fingerprint{};  // SHA-256, "AB:CD:..."
};

}  // namespace homewarden
