#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using PagesTest = ServerTest;

TEST_F(PagesTest, HandsQueriesOverAsTheyWereSent) {
  start();
  Client client(loop, port);
  for (const std::string query :
       {"", "loadroomKitchen", "A~3~KitchenLamp~turnon~Kitchen", "a=1&b=%zz+%00%41&&=", "a?b?c",
        "K\xfc"
        "che%20<b>\"'",
        "~~~~~~", "%"}) {
    const Answer answer = client.ask("/index.html?" + query);
    EXPECT_EQ(answer.status, 200) << query;
    EXPECT_EQ(answer.body, "index.html?" + query);
  }
  EXPECT_EQ(client.ask("/").body, "?");
  EXPECT_EQ(client.ask("/in%64ex.html").body, "index.html?");
  EXPECT_EQ(pages.front(), "index.html");
  EXPECT_EQ(server.QueryText(1, ""), "") << "an answered request keeps its query";
}

}  // namespace
}  // namespace homewarden::testing
