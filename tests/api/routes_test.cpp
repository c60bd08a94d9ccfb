#include "api/routes.h"

#include <set>
#include <stdexcept>

#include "api/openapi.h"
#include "core/program/house_parts.h"
#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

Task<Routes::Result> say(ApiCall call) {
  if (call.parameter("fail")) throw std::runtime_error("a fault");
  Json body = Json::Array{call.names.at(0), call.parameter("room").value_or("-")};
  co_return Routes::Answer{200, std::move(body)};
}

// Fails when a client's way of writing a path, or a fault of the program, leaves it without a right
// answer; or when a token that may only read changes something.
TEST(RoutesTest, EveryQuestionGetsAnAnswer) {
  FakeWeb web;
  json::NlohmannJson json;
  int faults = 0;
  Operations operations([&faults](std::exception_ptr) { ++faults; });
  Routes routes(operations, json, web);
  routes.add("GET", "/things/{id}", say);
  routes.add("POST", "/things/{id}", say);
  const auto ask = [&](const ApiRequest& request) { return web.api_answers[web.api(request)]; };
  EXPECT_EQ(ask({"GET", "/things/a%2/"}).body, "[\"a%2\",\"-\"]\n");
  EXPECT_EQ(ask({"GET", "/things/a", "x&room=Living+Room%2b%zz&room=2"}).body,
            "[\"a\",\"Living Room+%zz\"]\n");
  EXPECT_EQ(ask({"GET", "/things"}).status, 404U);
  EXPECT_EQ(ask({"PUT", "/things/a"}).status, 405U);
  EXPECT_EQ(ask({"PUT", "/things/a"}).allow, "GET, HEAD, POST");
  EXPECT_EQ(ask({"POST", "/things/a", "", "{"}).status, 400U);
  EXPECT_EQ(ask({"POST", "/things/a", "", std::string("{}\0", 3)}).status, 400U);
  ApiRequest reader{"POST", "/things/a"};
  reader.may_change = false;
  EXPECT_EQ(ask(reader).status, 403U);
  EXPECT_EQ(ask({"GET", "/things/a", "fail"}).status, 500U);
  EXPECT_EQ(faults, 1);
  EXPECT_EQ(operations.running(), 0U);
}

// Fails when something is offered that no program can read of, or is described and not there.
TEST(RoutesTest, WhatIsOfferedIsDescribedAndTheReverse) {
  House house;
  Label progress;
  HouseParts parts(
      house.house_platform(House::kFolder), [](std::exception_ptr) { FAIL(); }, progress);
  const auto offered = parts.routes.offered();
  const auto description = house.json.read(openapi_text());
  ASSERT_TRUE(description);
  std::set<std::string> described;
  for (const auto& [path, methods] : *description->find("paths")->object())
    for (const auto& [method, operation] : *methods.object()) {
      std::string name = method;
      for (char& letter : name) letter = static_cast<char>(letter - 'a' + 'A');
      described.insert(name + " " + path);
    }
  EXPECT_EQ(std::set<std::string>(offered.begin(), offered.end()), described);
}

}  // namespace
}  // namespace homewarden::testing
