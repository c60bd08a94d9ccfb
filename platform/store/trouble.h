#pragma once

#include <filesystem>

#include "platform/store_state.h"

namespace homewarden::store {

// Why a file cannot be used, from a result code of the library other than "ok" and what the system
// said (0 for nothing); where they say too little, its disk and its folder are asked.
StoreTrouble trouble_of(int result, int system_error, const std::filesystem::path& file);

}  // namespace homewarden::store
