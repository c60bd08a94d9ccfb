#pragma once

#include <string>
#include <vector>

#include "platform/recogniser.h"

namespace homewarden::testing {

// A house of 24 devices in six rooms, as it is registered, and what is said in it.

struct TalkingDevice {
  const char* room;  // in the system code page, as all names
  const char* device;
};
inline constexpr TalkingDevice kTalkingHouse[] = {
    {"Living Room", "Floor Lamp"},
    {"Living Room", "TV"},
    {"Living Room", "Hi-Fi"},
    {"Living Room", "Reading Light"},
    {"Kitchen", "Ceiling Light"},
    {"Kitchen", "Coffee Maker"},
    {"Kitchen", "Extractor Fan"},
    {"Kitchen", "Radio"},
    {"Master Bedroom", "Bedside Lamp"},
    {"Master Bedroom", "Heater"},
    {"Master Bedroom", "Fan"},
    {"Master Bedroom", "Ceiling Light"},
    {"Kinderzimmer", "Night Light"},
    {"Kinderzimmer", "Lamp 2"},
    {"Kinderzimmer", "Zoe's Lamp"},
    {"Kinderzimmer", "Radio"},
    {"Garage", "Door"},
    {"Garage", "Work Light"},
    {"Garage", "Freezer"},
    {"Garage", "Charger"},
    {"Garden", "Fountain"},
    {"Garden", "Patio Lights"},
    {"Garden", "J\xFCrgen's Grill"},
    {"Garden", "Christmas Tree"},
};

// The two fixed commands.
std::vector<VoiceCommand> fixed_commands();

// The four commands of a device, as they are registered.
std::vector<VoiceCommand> device_commands(const std::string& room, const std::string& device,
                                          const std::string& address);

// The fixed ones and those of the house above, its devices at A1 to A16 and B1 to B8.
std::vector<VoiceCommand> talking_house();

// What a person says for a command: all its words, the optional ones too, spelled so that a
// synthesiser says the same. (Between other words Flite takes "Hi" for the state: "Hawaii Fi".)
std::string said_in_full(const VoiceCommand& command);

// Sixty sentences that are no command.
const std::vector<std::string>& everyday_sentences();

// Thirty that nearly are one: a device that is not there, another order, "off" for "on".
const std::vector<std::string>& near_misses();

}  // namespace homewarden::testing
