#include "api/device_routes.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "api/body.h"
#include "base/code_page.h"
#include "base/text.h"

namespace homewarden {
namespace {

constexpr std::chrono::seconds kLongestWait{30};
constexpr int kFullyOn = 100;
const char* const kRetryAfter = "2";  // seconds, in which one or two have been sent
const char* const kNoDevice = "The house has no such device. The devices are at /devices.";

ApiProblem problem_of(RemoteCommands::Refusal refusal) {
  switch (refusal) {
    case RemoteCommands::Refusal::kTooManyOfOne:
      return {429, "Too many commands from this address are waiting for the power line already.",
              kRetryAfter};
    case RemoteCommands::Refusal::kTooMany:
      return {429, "Too many commands are waiting for the power line already.", kRetryAfter};
    case RemoteCommands::Refusal::kNothingToRepeat:
      return {422, "The last command reached this device: there is nothing to repeat."};
    default:
      return {503, "The program is ending."};
  }
}

// What the body of a command says; its fault in words otherwise.
struct Wanted {
  RemoteAct act = RemoteAct::kOn;
  int level = kFullyOn;
  bool wait = false;
};

std::string read_wait(const Json& body, bool& wait) {
  const Json* member = body.find("wait");
  if (member == nullptr) return "";
  if (!member->boolean()) return "\"wait\" must be true or false.";
  wait = *member->boolean();
  return "";
}

std::string read(const Json& body, Wanted& wanted) {
  std::string wrong = wrong_member(body, {"command", "level", "wait"});
  if (wrong.empty()) wrong = read_wait(body, wanted.wait);
  if (!wrong.empty()) return wrong;
  const Json* command = body.find("command");
  const auto act = command && command->text() ? remote_act(*command->text()) : std::nullopt;
  if (!act) return "\"command\" must be one of on, off, toggle, level, up, down and repeat.";
  wanted.act = *act;
  const Json* level = body.find("level");
  if (*act != RemoteAct::kLevel)
    return level ? "\"level\" belongs to the command \"level\" alone." : "";
  if (!level || !level->integer() || *level->integer() < 0 || *level->integer() > kFullyOn)
    return "\"level\" must be a whole number from 0 to 100.";
  wanted.level = static_cast<int>(*level->integer());
  return "";
}

}  // namespace

DeviceRoutes::DeviceRoutes(Routes& routes, const DeviceView& view, const HouseIndex& house,
                           const DeviceIds& ids, RemoteCommands& commands, Module1& module1)
    : view_(view), house_(house), ids_(ids), commands_(commands), module1_(module1) {
  routes.add("GET", "/devices", [this](ApiCall call) { return list(std::move(call)); });
  routes.add("GET", "/devices/{id}", [this](ApiCall call) { return one(std::move(call)); });
  routes.add("POST", "/devices/{id}/commands",
             [this](ApiCall call) { return command(std::move(call)); });
  routes.add("GET", "/commands", [this](ApiCall call) { return this->commands(std::move(call)); });
  routes.add("GET", "/commands/{id}",
             [this](ApiCall call) { return one_command(std::move(call)); });
}

Task<Routes::Result> DeviceRoutes::list(ApiCall call) {
  const auto room = call.parameter("room");
  const auto address = call.parameter("address");
  Json::Array devices;
  for (const Device* device : house_.written_devices()) {
    if (room && to_utf8(device->room) != *room) continue;
    const std::string its_address = to_utf8(device->house_code) + std::to_string(device->unit);
    if (address && !equals_ignoring_case(its_address, *address)) continue;
    devices.push_back(view_.json_of(*device));
  }
  Json body = Json::Object{{"devices", std::move(devices)}};
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> DeviceRoutes::one(ApiCall call) {
  const Device* device = ids_.by_id(call.names[0]);
  if (device == nullptr) co_return ApiProblem{404, kNoDevice};
  Json body = view_.json_of(*device);
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> DeviceRoutes::command(ApiCall call) {
  const Device* device = ids_.by_id(call.names[0]);
  if (device == nullptr) co_return ApiProblem{404, kNoDevice};
  Wanted wanted;
  const std::string wrong = read(call.body, wanted);
  if (!wrong.empty()) co_return ApiProblem{400, wrong};
  if (!device->has_address())
    co_return ApiProblem{422, "The power line has no such address as that of this device."};
  const bool dims = wanted.act == RemoteAct::kLevel || wanted.act == RemoteAct::kUp ||
                    wanted.act == RemoteAct::kDown;
  if (dims && !house_.type_of(device->key()).dimmable)
    co_return ApiProblem{422, "This device cannot be dimmed."};
  RemoteCommands::Answer asked =
      commands_.ask(*device, wanted.act, wanted.level, call.request.from);
  Routes::Result result = co_await answer(std::move(asked), wanted.wait);
  co_return result;
}

Task<Routes::Result> DeviceRoutes::run_event(Device device, DeviceOrder order, ApiCall call) {
  bool wait = false;
  std::string wrong = wrong_member(call.body, {"wait"});
  if (wrong.empty()) wrong = read_wait(call.body, wait);
  if (!wrong.empty()) co_return ApiProblem{400, wrong};
  RemoteCommands::Answer asked = commands_.ask_event(device, order, call.request.from);
  Routes::Result result = co_await answer(std::move(asked), wait);
  co_return result;
}

// What is answered as done is on the disk, as an answer is a promise.
Task<Routes::Result> DeviceRoutes::answer(RemoteCommands::Answer asked, bool wait) {
  if (const auto* refusal = std::get_if<RemoteCommands::Refusal>(&asked)) {
    ApiProblem problem = problem_of(*refusal);
    co_return problem;
  }
  const auto command = std::get<RemoteCommands::Pointer>(std::move(asked));
  if (wait) {
    co_await commands_.ended(command, kLongestWait);
    // Nothing is stored of others, and at the end the server stops right behind them.
    if (command->state == RemoteCommand::State::kDone ||
        command->state == RemoteCommand::State::kNotSent)
      co_await module1_.stored(RegistryRoot::kLocalMachine);
  }
  Routes::Answer answer{command->has_ended() && wait ? 200U : 202U, json_of(*command)};
  answer.location = std::string(kApiRoot) + "/commands/" + command->id;
  co_return answer;
}

Task<Routes::Result> DeviceRoutes::commands(ApiCall) {
  Json::Array all;
  for (const auto& command : commands_.all()) all.push_back(json_of(*command));
  Json body = Json::Object{{"commands", std::move(all)}};
  co_return Routes::Answer{200, std::move(body)};
}

Task<Routes::Result> DeviceRoutes::one_command(ApiCall call) {
  const auto command = commands_.find(call.names[0]);
  if (!command) co_return ApiProblem{404, "There is no such command, or it ended long ago."};
  Json body = json_of(*command);
  co_return Routes::Answer{200, std::move(body)};
}

}  // namespace homewarden
