#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/signal.h"

namespace homewarden {

// The kinds of control that the windows are made of, as plain values that can be watched. Logic
// sets them and connects to what a person does with them; a face shows them. Texts are bytes in the
// system code page.

struct Control {
  Control() = default;
  explicit Control(bool shown) : visible(shown) {}
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Property<bool> visible{true};
  Property<bool> enabled{true};
  Property<std::string> tool_tip;

  // Asks the face to put the keyboard focus here.
  Signal<> focus_requested;
  void set_focus() { focus_requested(); }
};

// A panel that holds other controls.
struct Frame : Control {
  using Control::Control;
};

// A text; a link when somebody is connected to its click.
struct Label : Control {
  explicit Label(std::string text = {}) : caption(std::move(text)) {}
  Property<std::string> caption;
  Signal<> click;
};

struct TextBox : Control {
  Property<std::string> text;
};

struct Button : Control {
  explicit Button(std::string text = {}) : caption(std::move(text)) {}
  Property<std::string> caption;
  Property<bool> bold;
  Signal<> click;
};

// Setting the box from code fires its click, as a person's click does; setting the value it has
// fires nothing.
struct CheckBox : Control {
  explicit CheckBox(std::string text = {}) : caption(std::move(text)) {
    checked.changed.connect([this] { click(); });
  }
  Property<std::string> caption;
  Property<bool> checked;
  Signal<> click;
};

// A list with a text box, into which a person can also type.
struct ComboBox : Control {
  Property<std::vector<std::string>> items;
  Property<std::string> text;
  Signal<> click;  // a person chose an entry; `text` is that entry
  bool sorted = false;

  // The entries and the text.
  void clear();
  // At the end, or where it belongs in a sorted list. The text stays, and no click is raised.
  void add(const std::string& item);
};

// Rows of a list that something is wrong with, from 0, each with the reason in words. A face warns
// at the row and says the reason; numbers without a row are passed over.
using RowMarks = Property<std::map<int, std::string>>;

struct ListBox : Control {
  explicit ListBox(bool keeps_sorted = false) : sorted(keeps_sorted) {}
  Property<std::vector<std::string>> items;
  Property<int> selected{-1};  // -1: none
  RowMarks marks;
  Signal<> mouse_down;
  const bool sorted;

  void clear();  // the marks too
  // Keeps a sorted list sorted, the marks with their entries; entries that compare equal stay in
  // the order of adding. `selected` keeps its number, not its entry.
  void add(const std::string& item);
  // Adds many at once: n log n, one notification. A sorted list loses its marks.
  void add_all(std::vector<std::string> more);
};

// The order of sorted lists: letter case ignored; blanks and punctuation before digits before
// letters, a letter with an accent right behind the same letter without. False for equal texts.
bool sorts_before(std::string_view a, std::string_view b);

// A slider moved by code reports nothing; `moved` is raised by a person's move, with the position
// already in `value`. Who cannot carry a move out sets `value` to what holds, and the face goes
// back there. A value beyond the range is shown at its end.
struct Slider : Control {
  int minimum = 20;
  int maximum = 100;
  Property<int> value{20};
  Signal<> moved;
  // Asks the face to let go of a move that is under way, without `moved`, and to show `value`
  // again, also when that is the one it has had all the time.
  Signal<> put_back;
};

struct Picture : Control {
  Property<std::string> file;  // path of an image; "" shows none
  Signal<> click;
};

struct StatusBar : Control {
  StatusBar() { unsent.visible = false; }
  Property<std::string> panel1;   // the clock
  Property<std::string> panel2;   // the status line
  Property<std::string> subject;  // "Living Room, Table Lamp": whom panel 2 tells of; or ""
  Property<std::string> panel3;   // the state of the interface
  Property<std::string> panel3_tip;
  Label unsent;  // a link: how many commands could not be sent
};

struct MenuEntry {
  explicit MenuEntry(std::string text, std::string key = {})
      : caption(std::move(text)), keys(std::move(key)) {}
  std::string caption;  // "-" draws a line
  std::string keys;     // "Ctrl+D": what does the same, told beside it; "" for none
  Property<bool> visible{true};
  Signal<> click;
};

// A pop-up menu. `popped_up` asks the face to show it where the pointer is.
struct Menu {
  explicit Menu(std::string text) : caption(std::move(text)) {}
  std::string caption;
  std::vector<MenuEntry*> entries;
  Signal<> popped_up;
};

struct ListColumn {
  std::string caption;
  int width = 0;  // twips
  bool operator==(const ListColumn&) const = default;
};

// A list of rows of texts under column headers.
struct ListView : Control {
  using Row = std::vector<std::string>;
  Property<std::vector<ListColumn>> columns;
  Property<std::vector<Row>> rows;
  Property<int> selected{-1};
  Property<int> sort_key{-1};  // the column that the rows are sorted by, from 0; -1: none
  RowMarks marks;
  Signal<> double_click;
  Signal<int> key_press;     // the character
  Signal<int> mouse_down;    // 1 left button, 2 right button
  Signal<int> column_click;  // position from 1

  // Replaces the rows, sorted by the texts of a column (from 0), and the marks, which are numbered
  // as the rows are before they are sorted; none is selected.
  void show(std::vector<Row> new_rows, int column,
            const std::map<int, std::string>& new_marks = {});
  // Sorts the rows anew by a column from 0, ascending; the selected row stays selected, the marked
  // ones marked. A row that does not have the column comes first. Rows that compare equal keep
  // their order.
  void sort_by(int column);
};

// Fires `tick` every `interval` milliseconds while it is enabled; 0 does not fire. Setting the
// interval, also to the value it has, or enabling it starts the countdown anew.
class Timer {
 public:
  enum class Start {
    kNow,          // a countdown lasts the interval
    kWholeMinute,  // an interval of a minute ends where the wall clock's minute ends
  };

  explicit Timer(int interval, bool enabled, Start start = Start::kNow)
      : interval_(interval), enabled_(enabled), start_(start) {}
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  // Milliseconds; 0 when it does not fire.
  int interval() const { return interval_; }
  bool enabled() const { return enabled_; }
  Start start() const { return start_; }
  // In a tick, what is set counts for the next one. Enabling what is enabled changes nothing.
  void set_interval(int milliseconds);
  void set_enabled(bool enabled);

  Signal<> tick;
  Signal<> rearmed;  // for whoever drives the timer

 private:
  int interval_;
  bool enabled_;
  Start start_;
};

enum class WindowState { kNormal, kMinimized };
enum class MousePointer { kNormal, kHourglass };

// Positions and sizes in twips, 15 to a pixel at normal size.
struct Window : Control {
  explicit Window(std::string title) : Control(false), caption(std::move(title)) {
    state.changed.connect([this] { resized(); });
  }
  Property<std::string> caption;
  Property<float> left{100};
  Property<float> top{100};
  Property<float> width{0};
  Property<float> height{0};
  Property<WindowState> state{WindowState::kNormal};
  Property<MousePointer> mouse_pointer{MousePointer::kNormal};
  Property<bool> topmost{false};
  int busy = 0;              // operations during which it takes no input
  Signal<> raised;           // asks the face to bring the window to the front
  Signal<> resized;          // its size or state changed, by a person or by code
  Signal<> close_requested;  // a person closes it
};

}  // namespace homewarden
