#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/controls.h"
#include "ui/figure.h"

namespace homewarden {

// What a person can choose by hand of what can be said.
struct CommandChoice {
  std::string caption;
  int number = 0;  // by which it is chosen

  bool operator==(const CommandChoice&) const = default;
};

// The commands of a room, or with an empty caption those of none.
struct CommandGroup {
  std::string caption;
  std::vector<CommandChoice> choices;

  bool operator==(const CommandGroup&) const = default;
};

// Where the figure stands, in pixels of the desktop.
struct FigurePlace {
  int left = 0;
  int top = 0;

  bool operator==(const FigurePlace&) const = default;
};

// The figure that listens: a small window above the others, which never has the keyboard.
struct FrmCharacter {
  Property<bool> visible{false};
  Property<std::shared_ptr<const Figure>> figure;  // nullptr before one is loaded
  Property<Pose> pose{Pose::kIdle};
  Label lab_bubble;  // what it says; "" and nothing is seen of a bubble

  // It has asked something: Yes and No stand in the bubble, and Enter and Escape answer.
  Property<bool> asking{false};
  Button cmd_yes{"Yes"};
  Button cmd_no{"No"};

  // The command list.
  Property<std::string> list_caption;
  Property<bool> list_visible{false};
  Property<std::vector<CommandGroup>> list;
  Signal<int> command_chosen;
  Button cmd_hide{"Hide"};

  // Where a person has put it; nothing while the face may choose.
  Property<std::optional<FigurePlace>> place;
};

}  // namespace homewarden
