#pragma once

#include "platform/linux/descriptor.h"
#include "platform/web_host.h"

namespace homewarden::os_linux {

class LinuxWebFolder : public WebFolder {
 public:
  explicit LinuxWebFolder(std::filesystem::path folder);

  std::optional<OpenFile> open(const std::string& name) override;
  std::string read(const OpenFile& file, std::size_t most) override;
  std::string passwords() override;
  std::string key() override;
  void keep_key(const std::string& key) override;

 private:
  const std::filesystem::path folder_;
  const std::filesystem::path passwords_;  // under its own name, as it was found
};

// The same descriptor, which changes hands, for those who must not know this system. Not open when
// it was not.
Handle handle_of(Descriptor descriptor);

}  // namespace homewarden::os_linux
