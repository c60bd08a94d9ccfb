#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/line_places.h"
#include "core/list_file.h"
#include "platform/files.h"

namespace homewarden {

// Changes lines in several lists of a folder, or puts lines into them, in all of them or in none.
//
// What becomes of which line, and which line comes where, is written down first; one rename, of
// these notes to `tclines.tmp`, decides. After it a stop is made good by doing this to the lists as
// they are then.
class ListChanges {
 public:
  ListChanges(Files& files, std::filesystem::path folder);

  struct Change {
    std::string list;  // the name of its file, which may be missing
    // Must not change a line that it has made of another one.
    ListFile::Edit edit;
    // Instead of an edit: lines that are put into the list unless it has them. A list that is
    // missing is begun with them.
    std::vector<LineInPlace> added = {};
  };

  // The lists of the folder whose names end so; nothing when the folder cannot be read.
  std::optional<std::vector<std::string>> names_ending(std::string_view ending) {
    return files_.names_ending(folder_, ending);
  }

  // The first of these lists that is there and cannot be read; "" when there is none.
  std::string unreadable(const std::vector<std::string>& lists);

  // In the order given. False, with all lists as they were, when one of them or the notes cannot be
  // read or written; also while an earlier change that was stopped can be neither finished nor
  // taken back.
  bool carry_out(const std::vector<Change>& changes);

  // Finishes what was decided before a stop. What cannot be finished is taken back, and what cannot
  // be taken back either is tried again the next time.
  void recover();

 private:
  using Lines = std::map<std::string, std::string, std::less<>>;  // what becomes of them
  struct Noted {
    std::string list;
    Lines lines;
    std::vector<LineInPlace> added = {};
  };

  std::optional<std::vector<Noted>> note(const std::vector<Change>& changes);
  std::optional<std::vector<Noted>> read_notes();
  bool change(const std::string& name, const ListFile::Edit& edit);
  bool add(const std::string& name, const std::vector<LineInPlace>& lines);
  bool take_out(const std::string& name, const std::vector<LineInPlace>& lines);
  bool change_noted(const std::vector<Noted>& noted);
  bool take_back(const std::vector<Noted>& noted);
  void forget_notes();

  Files& files_;
  std::filesystem::path folder_;
  std::filesystem::path notes_;
  std::filesystem::path scratch_;
};

}  // namespace homewarden
