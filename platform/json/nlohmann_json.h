#pragma once

#include "platform/json_codec.h"

namespace homewarden::json {

class NlohmannJson : public JsonCodec {
 public:
  std::optional<Json> read(std::string_view text) const override;
  std::string write(const Json& value) const override;
};

}  // namespace homewarden::json
