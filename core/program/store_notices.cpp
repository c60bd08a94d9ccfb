#include "core/program/store_notices.h"

#include "base/code_page.h"

namespace homewarden {
namespace {

const char* reason(StoreTrouble trouble) {
  switch (trouble) {
    case StoreTrouble::kReadOnly:
      return "the disk is read-only";
    case StoreTrouble::kForbidden:
      return "the permissions of the file or its folder forbid it";
    case StoreTrouble::kNoSpace:
      return "there is no space left on the disk";
    case StoreTrouble::kLocked:
      return "another program has locked the file";
    case StoreTrouble::kDamaged:
      return "the file is damaged and cannot be set aside";
    case StoreTrouble::kSlow:
      return "the disk does not answer";
    case StoreTrouble::kFailing:
    case StoreTrouble::kNone:
      break;
  }
  return "the disk reports an error";
}

std::string unread(const StoreState& state) {
  return "The settings in " + state.file + " cannot be read: " + reason(state.trouble) +
         ". Until they can, the program works with its defaults; what changes is kept and written "
         "as soon as that is possible.";
}

std::string unwritten(const StoreState& state) {
  return "The settings in " + state.file + " cannot be written: " + reason(state.trouble) +
         ". Changes are kept in memory and written as soon as that is possible; if the program "
         "ends first, they are lost.";
}

std::string damaged(const StoreState& state, RegistryRoot root) {
  const std::string begin = "The settings in " + state.file +
                            " were damaged. The file was set aside as " + state.set_aside +
                            " and a new one begun";
  if (state.restored) return begin + " with all that was known; nothing was lost.";
  return begin + (root == RegistryRoot::kLocalMachine
                      ? ". Which devices are on is not known, nor are the ports of the interface "
                        "and the web server."
                      : ". The active profile, the types of the devices, the place and the options "
                        "have to be chosen again.");
}

}  // namespace

StoreNotices::StoreNotices(Registry& registry, Notices& notices, StatusBar& status,
                           ProgramTimers& timers)
    : registry_(registry), notices_(notices), status_(status) {
  registry.changed.connect([this](RegistryRoot root) { look(root); });
  timers.statetimer.tick.connect([this] { look(); });  // a disk that hangs raises nothing
}

void StoreNotices::look() {
  look(RegistryRoot::kLocalMachine);
  look(RegistryRoot::kCurrentUser);
}

void StoreNotices::look(RegistryRoot root) {
  StoreState state = registry_.state(root);
  state.file = from_utf8(state.file);
  state.set_aside = from_utf8(state.set_aside);
  Told& told = root == RegistryRoot::kLocalMachine ? machine_ : user_;
  const bool is_well = state.trouble == StoreTrouble::kNone;
  const Told now{!state.is_read && !is_well, state.is_read && !is_well};
  if (!state.set_aside.empty()) notices_.tell(state.file + " (damaged)", damaged(state, root));
  notices_.tell(state.file, now.unread      ? unread(state)
                            : now.unwritten ? unwritten(state)
                                            : std::string());
  if (told.unwritten && is_well)
    status_.panel2 = "The settings can be written again; nothing was lost.";
  else if (told.unread && !now.unread)
    status_.panel2 = "The settings in " + state.file + " have been read now.";
  told = now;
}

}  // namespace homewarden
