#pragma once

#include <map>

#include "platform/files.h"

namespace homewarden::os_linux {

// The files of a POSIX system. What a call reports as done is on the disk.
class PosixFiles : public Files {
 public:
  bool exists(const std::filesystem::path& file) override;
  std::optional<std::vector<std::string>> names_ending(const std::filesystem::path& folder,
                                                       std::string_view ending) override;
  // Also nothing for what is no regular file, and for more than 64 MiB.
  std::optional<std::string> read(const std::filesystem::path& file) override;
  std::optional<std::string> read_settled(const std::filesystem::path& file) override;
  std::optional<FileStamp> stamp(const std::filesystem::path& file) override;
  bool write(const std::filesystem::path& file, std::string_view content) override;
  bool write_secret(const std::filesystem::path& file, std::string_view content) override;
  bool append(const std::filesystem::path& file, std::string_view content) override;
  bool rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  Exchange exchange(const std::filesystem::path& from, const std::filesystem::path& to,
                    std::string_view known) override;
  bool remove(const std::filesystem::path& file) override;

 private:
  // existing_name(), which reads a folder, but once for each file that is there.
  const std::filesystem::path& find(const std::filesystem::path& file);

  std::map<std::filesystem::path, std::filesystem::path> other_names_;
};

}  // namespace homewarden::os_linux
