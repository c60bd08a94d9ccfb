#include "tests/speech/talk/house_talk.h"

#include "base/text.h"

namespace homewarden::testing {

std::vector<VoiceCommand> fixed_commands() {
  return {{"Properties", "Change Speech Properties", "Speech Properties"},
          {"repeat", "Repeat Command", "[repeat] command"}};
}

std::vector<VoiceCommand> device_commands(const std::string& room, const std::string& device,
                                          const std::string& address) {
  const std::string name = room + " " + device;
  const std::string voice = room + " [" + device + "]";
  return {{"on~" + address, name + " on", voice + " [on]"},
          {"bright~" + address, "Bright " + name, "Bright " + voice},
          {"dim~" + address, "Dim " + name, "Dim " + voice},
          {"off~" + address, "Cancel " + name, "[Cancel] " + voice}};
}

std::vector<VoiceCommand> talking_house() {
  std::vector<VoiceCommand> commands = fixed_commands();
  int number = 0;
  for (const auto& [room, device] : kTalkingHouse) {
    const std::string address = (number < 16 ? "A" : "B") + std::to_string(number % 16 + 1);
    ++number;
    for (VoiceCommand& command : device_commands(room, device, address))
      commands.push_back(std::move(command));
  }
  return commands;
}

std::string said_in_full(const VoiceCommand& command) {
  std::string text;
  for (const char c : command.voice)
    if (c != '[' && c != ']') text += c;
  text = replace_all(text, "J\xFCrgen", "Jurgen");
  return replace_all(text, "Hi-Fi", "High Fi");
}

const std::vector<std::string>& everyday_sentences() {
  static const std::vector<std::string> sentences = {"What time is it",
                                                     "Did you feed the cat",
                                                     "It looks like rain again",
                                                     "I will be home around seven",
                                                     "Can you pass me the salt please",
                                                     "The kids are still at school",
                                                     "Where did I put my glasses",
                                                     "We are out of milk",
                                                     "Turn around and look at me",
                                                     "Dinner is ready",
                                                     "Who left the window open",
                                                     "I am going to bed now",
                                                     "That was a good film",
                                                     "Have you seen my phone",
                                                     "The bus was late again today",
                                                     "Please close the door behind you",
                                                     "My mother called this morning",
                                                     "Let us go for a walk",
                                                     "It is too hot in the kitchen",
                                                     "The garden needs some water",
                                                     "Somebody parked in front of the garage",
                                                     "I cannot find the remote control",
                                                     "Could you speak a little louder",
                                                     "The light in the hall is broken",
                                                     "Nice weather we are having",
                                                     "He fell asleep in front of the television",
                                                     "Do you want coffee or tea",
                                                     "There is a letter for you",
                                                     "I forgot to lock the car",
                                                     "The neighbours are having a party",
                                                     "How much did that cost",
                                                     "She is on the phone",
                                                     "We should paint the bedroom",
                                                     "The radio said it will snow",
                                                     "Tomorrow is a holiday",
                                                     "I need a new pair of shoes",
                                                     "Good morning everybody",
                                                     "Stop that right now",
                                                     "Are you coming with us",
                                                     "The dog wants to go out",
                                                     "Yes of course",
                                                     "No not yet",
                                                     "Thank you very much",
                                                     "See you later",
                                                     "Hello",
                                                     "The lamp in the living room is very old",
                                                     "Is the heater still under warranty",
                                                     "Christmas is only four weeks away",
                                                     "Come on we are late",
                                                     "I do not think so",
                                                     "What is for lunch",
                                                     "The doctor will call you back",
                                                     "This soup needs more pepper",
                                                     "Who is at the door",
                                                     "Put the books back on the shelf",
                                                     "My computer crashed twice today",
                                                     "The train leaves at nine fifteen",
                                                     "Bright colours suit you",
                                                     "They cancelled the match",
                                                     "I read about it in the paper"};
  return sentences;
}

const std::vector<std::string>& near_misses() {
  static const std::vector<std::string> sentences = {
      // No such device, or not in this room.
      "Kitchen Computer on", "Garage Radio on", "Cancel Garden Heater", "Bright Living Room Fan",
      "Dim Bathroom Mirror", "Living Room Aquarium on", "Kitchen Toaster on",
      "Cancel Master Bedroom Television", "Garden Sprinkler on", "Dim Kitchen Curtain",
      // Another order.
      "On Kitchen Radio", "Floor Lamp Living Room on", "Light Kitchen Ceiling bright",
      "Garage Door cancel", "Garden Fountain dim", "Heater Master Bedroom on", "On Garage Freezer",
      "Living Room TV bright", "Cancel Fountain Garden", "Reading Light on Living Room",
      // Off, which no command has.
      "Kitchen Coffee Maker off", "Living Room Floor Lamp off", "Garage Work Light off",
      "Master Bedroom Heater off", "Garden Patio Lights off", "Kinderzimmer Night Light off",
      "Living Room High Fi off", "Master Bedroom Fan off", "Garage Door off",
      "Off Garden Christmas Tree"};
  return sentences;
}

}  // namespace homewarden::testing
