#include "platform/http/switch_line.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {
namespace {

template <class Steps>
std::size_t count_switches(const Steps& steps) {
  return static_cast<std::size_t>(std::count_if(
      steps.begin(), steps.end(), [](const auto& step) { return step.what.has_value(); }));
}

// The last one of the device, if it is of the state: between "on" and "on" there must be no "off".
template <class Steps>
auto* same_switch(Steps& steps, const WebSwitch& what) {
  const auto last = std::find_if(steps.rbegin(), steps.rend(), [&what](const auto& step) {
    return step.what && step.what->device == what.device;
  });
  const bool is_same = last != steps.rend() && last->what->state == what.state;
  return is_same && !what.device.empty() ? &*last : nullptr;
}

}  // namespace

bool SwitchLine::occupies(const Address& from) const {
  return (current_ != 0 && current_from_ == from) || lines_.contains(from);
}

std::size_t SwitchLine::size(const Address& from) const {
  const auto line = lines_.find(from);
  if (line == lines_.end()) return 0;
  std::size_t ids = 0;
  for (const Step& step : line->second) ids += step.ids.size();
  return ids;
}

std::size_t SwitchLine::switches(const Address& from) const {
  const auto line = lines_.find(from);
  if (line == lines_.end()) return 0;
  const bool has_its_turn = current_ == 0 && !turns_.empty() && turns_.front() == from;
  return count_switches(line->second) - (has_its_turn ? 1 : 0);
}

bool SwitchLine::joins(const Address& from, const WebSwitch& what) const {
  const auto line = lines_.find(from);
  return line != lines_.end() && same_switch(line->second, what) != nullptr;
}

void SwitchLine::add_switch(const Address& from, int id, WebSwitch what) {
  ++size_;
  const bool waits = current_ != 0 || !turns_.empty();
  Steps& steps = lines_[from];
  if (Step* step = same_switch(steps, what)) {
    step->ids.push_back(id);
    return;
  }
  if (count_switches(steps) == 0) turns_.push_back(from);
  steps.push_back({std::move(what), {id}, waits});
}

void SwitchLine::add_page(const Address& from, int id) {
  ++size_;
  lines_[from].push_back({std::nullopt, {id}});
}

std::vector<int> SwitchLine::next() const {
  if (current_ != 0 || turns_.empty()) return {};
  return lines_.at(turns_.front()).front().ids;
}

bool SwitchLine::next_waited() const {
  return lines_.at(turns_.front()).front().waits;
}

std::vector<int> SwitchLine::begin() {
  current_from_ = turns_.front();
  turns_.pop_front();
  Steps& steps = lines_.at(current_from_);
  also_current_ = std::move(steps.front().ids);
  steps.pop_front();
  --size_;
  current_ = also_current_.front();
  also_current_.erase(also_current_.begin());
  for (auto id = also_current_.rbegin(); id != also_current_.rend(); ++id)
    steps.push_front({std::nullopt, {*id}});
  if (count_switches(steps) > 0) turns_.push_back(current_from_);
  if (steps.empty()) lines_.erase(current_from_);
  return also_current_;
}

void SwitchLine::end() {
  current_ = 0;
  also_current_.clear();
  release_pages(current_from_);
}

void SwitchLine::release_pages(const Address& from) {
  const auto line = lines_.find(from);
  if (line == lines_.end() || (current_ != 0 && current_from_ == from)) return;
  Steps& steps = line->second;
  while (!steps.empty() && !steps.front().what) {
    --size_;
    free_(steps.front().ids.front());
    steps.pop_front();
  }
  if (steps.empty()) lines_.erase(line);
}

void SwitchLine::leave(const Address& from, int id) {
  const auto line = lines_.find(from);
  if (line == lines_.end()) return;
  Steps& steps = line->second;
  const auto step = std::find_if(steps.begin(), steps.end(), [id](const Step& candidate) {
    return std::find(candidate.ids.begin(), candidate.ids.end(), id) != candidate.ids.end();
  });
  if (step == steps.end()) return;
  --size_;
  std::erase(step->ids, id);
  std::erase(also_current_, id);
  if (step->ids.empty()) steps.erase(step);
  if (count_switches(steps) == 0) std::erase(turns_, from);
  if (steps.empty())
    lines_.erase(line);
  else
    release_pages(from);
}

}  // namespace homewarden::http
