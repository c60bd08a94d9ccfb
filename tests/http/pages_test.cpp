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

TEST_F(PagesTest, SendsPicturesOnceUntilTheyChange) {
  const std::string picture(200000, '\x81');
  write("lamp.gif", picture);
  start();
  const Answer first = get("/lamp.gif");
  EXPECT_EQ(first.status, 200);
  EXPECT_EQ(first.body, picture);
  EXPECT_EQ(first.header("Content-Type"), "image/gif");
  EXPECT_NE(first.header("Cache-Control").find("max-age"), std::string::npos);
  const std::string tag = first.header("ETag");
  const std::string host = "Host: localhost\r\n";
  Client client(loop, port);
  EXPECT_EQ(client.ask("/lamp.gif", host, "HEAD").header("Content-Length"), "200000");
  const Answer same = client.ask("/lamp.gif", host + "If-None-Match: \"x\", W/" + tag + "\r\n");
  EXPECT_EQ(same.status, 304);
  EXPECT_EQ(same.header("ETag"), tag);
  const std::string date = "If-Modified-Since: " + first.header("Last-Modified") + "\r\n";
  EXPECT_EQ(client.ask("/lamp.gif", host + date).status, 304);
  EXPECT_EQ(client.ask("/lamp.gif", host + "If-None-Match: \"x\"\r\n" + date).status, 200);

  write("lamp.gif", "GIF");
  const Answer changed = client.ask("/lamp.gif", host + "If-None-Match: " + tag + "\r\n");
  EXPECT_EQ(changed.status, 200);
  EXPECT_EQ(changed.body, "GIF");
}

}  // namespace
}  // namespace homewarden::testing
