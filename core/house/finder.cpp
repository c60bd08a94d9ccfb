#include "core/house/finder.h"

#include <algorithm>
#include <utility>

#include "automation/event_list.h"
#include "automation/event_words.h"
#include "automation/next_run.h"
#include "core/dates.h"
#include "ui/fixed_nodes.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;
constexpr std::size_t kMostSwitches = 6;
constexpr std::size_t kMostPlaces = 4;
constexpr std::size_t kMostEvents = 3;

std::string state_in_words(bool on, int level) {
  if (!on) return "now off";
  return level < kFullyOn ? "now " + std::to_string(level) + " %" : "now on";
}

// The best first; of equals the order of the house.
template <class Meant>
void keep_best(std::vector<Meant>& found, std::size_t most) {
  std::stable_sort(found.begin(), found.end(),
                   [](const Meant& a, const Meant& b) { return a.score > b.score; });
  if (found.size() > most) found.resize(most);
}

}  // namespace

Finder::Finder(FinderPanel& panel, NavigationPane& pane, EventPanel& events, Operations& operations,
               EventLoop& loop, HouseIndex& house, DeviceState& state, DevicePanel& devices,
               const Location& location, std::filesystem::path folder)
    : panel_(panel),
      tree_(pane.Tree),
      events_(events),
      operations_(operations),
      loop_(loop),
      house_(house),
      state_(state),
      devices_(devices),
      location_(location),
      folder_(std::move(folder)) {
  panel.opened.connect([this] { open(); });
  panel.closed.connect([this] { panel_.frm_finder.visible = false; });
  panel.do_it.connect([this] { do_chosen(); });
  panel.show_it.connect([this] { show_chosen(); });
  panel.txt_find.text.changed.connect([this] { find(); });
  // What a person is about to do stays chosen.
  const auto find_again = [this] {
    if (!panel_.frm_finder.visible) return;
    const Meant before = chosen() ? *chosen() : Meant();
    find();
    const auto same = std::find_if(meant_.begin(), meant_.end(), [&before](const Meant& meant) {
      return meant.shown.kind == before.shown.kind && meant.node == before.node &&
             meant.device == before.device && meant.event == before.event;
    });
    if (same != meant_.end()) panel_.chosen = static_cast<int>(same - meant_.begin());
  };
  house.changed.connect(find_again);
  events.ListView1.rows.changed.connect(find_again);
  state.changed.connect([find_again](const StateChange&) { find_again(); });
}

void Finder::offer(std::string title, std::string also_called, std::function<void()> open,
                   std::function<bool()> applies) {
  offers_.push_back(
      {std::move(title), std::move(also_called), std::move(open), std::move(applies)});
}

void Finder::open() {
  panel_.txt_find.text = std::string();
  find();
  panel_.frm_finder.visible = true;
  panel_.txt_find.set_focus();
}

void Finder::find() {
  const FindWords words = words_typed();
  std::vector<Meant> switches;
  std::vector<Meant> places;
  std::vector<Meant> events;
  find_switches(words, switches);
  find_rooms_off(words, switches);
  if (tree_.enabled) {  // otherwise an event is being edited
    find_places(words, places);
    find_events(words, events);
  }
  keep_best(switches, kMostSwitches);
  keep_best(places, kMostPlaces);
  keep_best(events, kMostEvents);
  const auto best = [](const std::vector<Meant>& found) {
    return found.empty() ? 0 : found.front().score;
  };
  // A room's name alone means the room.
  const bool places_first = !words.command && best(places) > best(switches);
  if (places_first) std::swap(switches, places);
  meant_ = std::move(switches);
  for (const auto* more : {&places, &events})
    meant_.insert(meant_.end(), more->begin(), more->end());
  std::vector<Found> shown;
  for (const Meant& meant : meant_) shown.push_back(meant.shown);
  panel_.chosen = 0;
  panel_.lab_nothing.visible = shown.empty();
  panel_.found = std::move(shown);
}

// A number is a level unless something of the house is called so: "bedroom 2", "lamp 40".
FindWords Finder::words_typed() const {
  FindWords words = find_words(panel_.txt_find.text.get());
  if (words.number.empty()) return words;
  const auto& rooms = house_.rooms();
  const auto& devices = house_.devices();
  const bool is_name =
      std::any_of(rooms.begin(), rooms.end(),
                  [&words](const auto& room) { return names_number(words, room); }) ||
      std::any_of(devices.begin(), devices.end(), [&words](const Device& device) {
        return names_number(words, device.name, device.room);
      });
  if (!is_name) return words;
  words.names.push_back(std::move(words.number));
  words.command.reset();
  return words;
}

// Without a command a press is meant. Nothing typed: what is on, to be turned off.
void Finder::find_switches(const FindWords& words, std::vector<Meant>& found) const {
  for (const Device& device : house_.devices()) {
    const bool on = state_.getlaststatus(device.key());
    const int score = match(words.names, device.name, device.room);
    if (score == 0 || (words.names.empty() && !on)) continue;
    const DeviceOrder order = words.command.value_or(DeviceOrder{!on, kFullyOn});
    const bool dims = order.on && order.level < kFullyOn;
    if (dims && !house_.type_of(device.key()).dimmable) continue;
    Meant meant = switch_of(device, order);
    // What is so already is not what a person wants most, however exactly it is named.
    meant.score = score * 2 + (order.on == on && !dims ? 0 : 3);
    found.push_back(std::move(meant));
  }
}

Finder::Meant Finder::switch_of(const Device& device, DeviceOrder order) const {
  const std::string key = device.key();
  const bool on = state_.getlaststatus(key);
  const bool dims = order.on && order.level < kFullyOn;
  Meant meant;
  meant.device = device;
  meant.order = order;
  meant.node = device.room;
  meant.shown.kind = Found::Kind::kDevice;
  meant.shown.group = "Switch";
  const std::string verb = dims ? "Set " : "Turn ";
  meant.shown.bold_from = verb.size();
  meant.shown.title = verb + device.name +
                      (dims       ? " to " + std::to_string(order.level) + " %"
                       : order.on ? " on"
                                  : " off");
  meant.shown.detail = device.room + ", " + state_in_words(on, state_.level(key));
  meant.shown.picture = (folder_ / device_picture(house_.type_of(key), on)).string();
  return meant;
}

int Finder::count_on(const std::string& room) const {
  const auto devices = house_.devices_in(room);
  return static_cast<int>(std::count_if(devices.begin(), devices.end(), [this](const auto* device) {
    return state_.getlaststatus(device->key());
  }));
}

void Finder::find_rooms_off(const FindWords& words, std::vector<Meant>& found) const {
  if (!words.command || words.command->on || words.names.empty()) return;
  for (const std::string& room : house_.rooms()) {
    const int score = match(words.names, room);
    const int on = count_on(room);
    if (score == 0 || on == 0) continue;
    Meant meant;
    meant.score = score * 2;
    meant.node = room;
    meant.shown.kind = Found::Kind::kSwitchOff;
    meant.shown.group = "Switch";
    meant.shown.title = "Turn " + room + " off";
    meant.shown.bold_from = 5;
    meant.shown.detail = std::to_string(on) + (on == 1 ? " device" : " devices");
    found.push_back(std::move(meant));
  }
}

void Finder::find_places(const FindWords& words, std::vector<Meant>& found) const {
  const auto add = [&](const std::string& name, Found::Kind kind, std::string detail,
                       std::string_view also_called = {}) {
    const int score = match(words.names, name, also_called);
    if (score == 0 || (words.command && words.names.empty())) return;
    Meant meant;
    meant.score = score * 2;
    meant.node = name;
    meant.shown.kind = kind;
    meant.shown.group = "Go to";
    meant.shown.title = name;
    meant.shown.detail = std::move(detail);
    found.push_back(std::move(meant));
  };
  for (const std::string& room : house_.rooms()) {
    const auto size = house_.devices_in(room).size();
    add(room, Found::Kind::kRoom,
        size == 0 ? std::string("no devices yet")
                  : std::to_string(count_on(room)) + " of " + std::to_string(size) + " on");
  }
  if (words.command) return;
  for (const char* panel : kFixedNodes) add(panel, Found::Kind::kPanel, {});
  if (words.names.empty()) return;
  for (const Offer& offer : offers_)
    if (offer.applies()) add(offer.title, Found::Kind::kOffer, {}, offer.also_called);
}

// The word "events" asks for them, and names none.
void Finder::find_events(const FindWords& words, std::vector<Meant>& found) const {
  std::vector<std::string> names;
  for (const std::string& name : words.names)
    if (name != "event" && name != "events") names.push_back(name);
  if (names.empty()) return;
  const Minute now = minute_of(loop_.local_time());
  const SunTimesOf sun_times =
      remembered([this](std::chrono::local_days day) { return location_.sun_times(day); });
  const auto& rows = events_.ListView1.rows.get();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const EventRecord event = event_in(rows[row]);
    const int score = match(names, event.roomdevice);
    const bool other_command = words.command && words.command->on != (event.action == "on");
    if (score == 0 || other_command) continue;
    const auto next = next_run(event, now, sun_times);
    Meant meant;
    meant.score = score;
    meant.node = kEvents;
    meant.event = static_cast<int>(row);
    meant.shown.kind = Found::Kind::kEvent;
    meant.shown.group = "Events";
    const std::string time = next ? clock_in_words(*next) + ", " : std::string();
    meant.shown.bold_from = time.size();
    meant.shown.title = time + event.roomdevice + " " + action_in_words(event);
    meant.shown.detail = days_in_words(event.days) + ", " + time_in_words(event.time) +
                         (next ? ", next: " + day_in_words(*next, now) : std::string());
    found.push_back(std::move(meant));
  }
}

const Finder::Meant* Finder::chosen() const {
  const int position = panel_.chosen;
  const bool is_one = position >= 0 && position < static_cast<int>(meant_.size());
  return is_one ? &meant_[static_cast<std::size_t>(position)] : nullptr;
}

// The house may have changed since it was found: whoever switches looks again.
void Finder::do_chosen() {
  if (!chosen()) return;
  const Meant meant = *chosen();
  panel_.frm_finder.visible = false;
  if (meant.shown.kind == Found::Kind::kDevice)
    operations_.start(devices_.order(meant.device, meant.order));
  else if (meant.shown.kind == Found::Kind::kSwitchOff)
    operations_.start(switch_room_off(meant.node));
  else
    go_to(meant);
}

void Finder::show_chosen() {
  if (!chosen()) return;
  const Meant meant = *chosen();
  panel_.frm_finder.visible = false;
  go_to(meant);
}

void Finder::go_to(const Meant& meant) {
  if (meant.shown.kind == Found::Kind::kOffer) {
    for (const Offer& offer : offers_)
      if (offer.title == meant.node && tree_.enabled) return offer.open();
    return;
  }
  TreeNode* node = tree_.find(meant.node);
  if (!node || !tree_.enabled) return;
  tree_.selected = node;
  tree_.click();  // it may be selected while another panel shows
  if (meant.shown.kind == Found::Kind::kDevice) devices_.turn_to(meant.device);
  if (meant.event >= 0) events_.ListView1.selected = meant.event;
}

Task<void> Finder::switch_room_off(std::string room) {
  std::vector<Device> devices;
  for (const Device* device : house_.devices_in(room))
    if (state_.getlaststatus(device->key())) devices.push_back(*device);
  for (Device& device : devices) co_await devices_.order(std::move(device), DeviceOrder{false, 0});
}

}  // namespace homewarden
