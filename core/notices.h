#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/signal.h"

namespace homewarden {

// What is wrong with the house for as long as it is: a list that cannot be read, settings that
// cannot be written. Whoever finds it says so here; the home page and the foot of the web pages
// show all of it, and no other message wipes it out.
class Notices {
 public:
  // In the words that a person reads, in the system code page, whole sentences. `subject` names
  // what it is about, a file for instance: each has one notice, which a later one replaces. `text`
  // "" says that all is well again.
  void tell(const std::string& subject, std::string text);
  void withdraw(const std::string& subject) { tell(subject, ""); }

  // The notice of a subject; "" when there is none.
  std::string of(const std::string& subject) const;
  // All of them, a line each, in the order in which they came up; "" when all is well.
  std::string text() const;

  // Another number after each change.
  std::uint64_t version() const { return version_; }

  // A notice came up, became another one or went: the subject, and what is told now ("" for gone).
  // Telling the same again raises nothing.
  Signal<const std::string&, const std::string&> changed;

 private:
  std::vector<std::pair<std::string, std::string>> notices_;
  std::uint64_t version_ = 0;
};

}  // namespace homewarden
