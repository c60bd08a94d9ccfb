#pragma once

#include <functional>
#include <optional>
#include <string>

#include "automation/macro_line.h"
#include "base/json.h"
#include "core/house_index.h"
#include "core/list_file.h"

namespace homewarden {

// What a program is told of the macros.
class MacroAnswers {
 public:
  using DeviceId = std::function<std::string(const Device&)>;

  MacroAnswers(ListFile& macros, const HouseIndex& house, DeviceId id_of);

  // In the order of the file, also lines that are no macro. Nothing when it cannot be read.
  std::optional<Json::Array> all() const;

 private:
  Json end_of(const MacroEnd& end, std::string words) const;
  const Device* device_of(const MacroEnd& end) const;
  std::string name_of(const MacroEnd& end) const;

  ListFile& macros_;
  const HouseIndex& house_;
  DeviceId id_of_;
};

}  // namespace homewarden
