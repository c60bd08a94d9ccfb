#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace homewarden {

// Tells one content of a file from another without reading it.
struct FileStamp {
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t changed = 0;  // nanoseconds

  bool operator==(const FileStamp&) const = default;
};

// With the files as they were unless it is done. kCannot: the disk is not able to do it at all, as
// some network folders, or refuses it.
enum class Exchange { kDone, kChanged, kCannot };

// The files of the house. The order of the calls is the order on the disk, and rename and remove
// are one step each that a power cut leaves done or not done. All return false, or nothing, on
// failure.
//
// A house may come from a system that takes no notice of letter case: where nothing has exactly the
// name given, what differs from it in letter case alone is meant, and keeps its own name when it is
// written or replaced.
class Files {
 public:
  virtual ~Files() = default;

  // Whether anything has the name, be it a folder or a link that leads nowhere: true is no promise
  // that it can be read. True also when that cannot be told.
  virtual bool exists(const std::filesystem::path& file) = 0;

  // Names of the files in a folder that end so, letter case ignored, in the order of their names;
  // folders and links that lead nowhere are left out. Nothing when the folder cannot be read: it
  // may hold some all the same.
  virtual std::optional<std::vector<std::string>> names_ending(const std::filesystem::path& folder,
                                                               std::string_view ending) = 0;

  // The whole content. Nothing when the file is missing or cannot be read.
  virtual std::optional<std::string> read(const std::filesystem::path& file) = 0;

  // The same for a file that others write into: when it has just been changed and they are not done
  // with it, it is given a moment, 20 ms at most. Where the system cannot tell, they are not while
  // it is empty or ends within a line.
  virtual std::optional<std::string> read_settled(const std::filesystem::path& file) = 0;

  // As long as the stamp is the same, so is the content. Nothing when the file is missing, or was
  // changed so lately that a change after this one might go unnoticed.
  virtual std::optional<FileStamp> stamp(const std::filesystem::path& file) = 0;

  // Creates the file or empties it, writes the content and has it on the disk on return. A failure
  // or a power cut may leave part of the content: what must not be lost is written elsewhere and
  // renamed, see replace_file().
  virtual bool write(const std::filesystem::path& file, std::string_view content) = 0;

  // The same for a file that nobody but its owner may read.
  virtual bool write_secret(const std::filesystem::path& file, std::string_view content) = 0;

  // Adds to the end of the file, which is created when missing; on the disk on return. When it
  // fails nothing is added.
  virtual bool append(const std::filesystem::path& file, std::string_view content) = 0;

  // Puts `from` in the place of `to`, whether or not `to` exists, in one step. Where `to` is a link
  // to a file, that file is replaced and the link stays.
  virtual bool rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  // Lets two files change places in one step, provided that `to` has the content `known` and nobody
  // is writing it; whoever begins to at that very moment is noticed. It does not wait for the disk:
  // it is there when the next change of these files is. A link at `to` stays, as above.
  virtual Exchange exchange(const std::filesystem::path& from, const std::filesystem::path& to,
                            std::string_view known) = 0;

  // True also when there was no such file. Where several differ in letter case, the others stay.
  virtual bool remove(const std::filesystem::path& file) = 0;
};

}  // namespace homewarden
