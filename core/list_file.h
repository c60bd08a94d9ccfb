#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace homewarden {

// A data file of lines: rooms and devices, events, macros. Whoever waits between reading it and
// changing it holds `filebusy` for that time.
//
// A change writes the whole new list into a scratch file beside it and puts that in the place of
// the list, so a stop at any moment leaves the old list or the new one. The list belongs to others
// too: what an editor or a script has saved since it was read is part of the new list.
class ListFile {
 public:
  using Choice = std::function<bool(std::string_view line)>;
  // What is written in the place of a line; nothing for a line that stays.
  using Edit = std::function<std::optional<std::string>(std::string_view line)>;
  // The whole new list, made of the old one: "" for a list that is missing.
  using Make = std::function<std::string(std::string_view content)>;

  ListFile(Files& files, std::filesystem::path file, std::filesystem::path scratch);

  // True also for a list that is there and cannot be read.
  bool exists();

  // All lines, without a byte-order mark. Nothing when the file is missing or cannot be read.
  std::optional<std::string> content();

  // Writes into the scratch file the lines that are not chosen, and `added` behind them unless it
  // is "". False, with the list as it was, when the list cannot be read or the scratch file cannot
  // be written. The choice must be good until the scratch file is used or removed.
  bool write_scratch(const Choice& left_out, std::string_view added = {});

  // Writes all lines into the scratch file, edited. Otherwise as above.
  bool write_edited(const Edit& edit);

  // Writes what is made of the list, which may be missing, into the scratch file. Otherwise as
  // above.
  bool write_made(const Make& make);

  // Puts the scratch file in the place of the list. When that has changed since write_scratch(),
  // the change is made to what it holds now; when it has gone, nothing is left out of it. False,
  // with the list as it was, when that cannot be done, while somebody else is writing the list, and
  // when lines were to be added to a list that has gone.
  bool use_scratch();

  // Adds a line, or several with CR LF between them, behind the others. False, with the list as it
  // was, when that cannot be done.
  bool add(std::string_view line);

  // Nothing happens when there is none, or when it cannot be removed.
  void remove_scratch();

  // Puts back what a stop in the middle of a change left as the only copy of the list, whole lines
  // only. Beside a list the scratch file is removed.
  void recover();

  const std::filesystem::path& path() const { return file_; }
  const std::filesystem::path& scratch() const { return scratch_; }

 private:
  // What the scratch file holds, and the list it was made from; nothing for one that was missing.
  struct Change {
    Choice left_out;
    Edit edit;
    std::string added;
    std::optional<std::string> made_from;
    Make make = nullptr;

    bool adds() const { return !added.empty() || make; }
  };

  bool begin(Change change);
  bool write_change();
  std::optional<bool> bring_up_to_date();

  Files& files_;
  std::filesystem::path file_;
  std::filesystem::path scratch_;
  std::optional<Change> change_;
};

}  // namespace homewarden
