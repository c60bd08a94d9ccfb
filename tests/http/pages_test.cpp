#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

namespace fs = std::filesystem;
using PagesTest = ServerTest;

void expect_common_headers(const Answer& answer) {
  EXPECT_EQ(answer.header("X-Content-Type-Options"), "nosniff") << answer.head;
  EXPECT_EQ(answer.header("X-Frame-Options"), "DENY") << answer.head;
  EXPECT_EQ(answer.header("Content-Security-Policy"),
            "default-src 'none'; img-src 'self'; style-src 'self'; script-src 'self'; base-uri "
            "'none'; form-action 'none'; frame-ancestors 'none'");
  EXPECT_EQ(answer.header("Referrer-Policy"), "same-origin") << answer.head;
}

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

TEST_F(PagesTest, SendsPagesThatBrowsersDoNotKeep) {
  start();
  const Answer answer = get("/index.html");
  expect_common_headers(answer);
  EXPECT_EQ(answer.header("Content-Type"), "text/html; charset=windows-1252");
  EXPECT_EQ(answer.header("Cache-Control"), "no-store");
  const Answer head = Client(loop, port).ask("/index.html?x", "Host: a\r\n", "HEAD");
  EXPECT_EQ(head.status, 200);
  EXPECT_EQ(head.header("Content-Length"), "12");
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
  expect_common_headers(first);
  const std::string tag = first.header("ETag");
  const std::string host = "Host: localhost\r\n";
  Client client(loop, port);
  EXPECT_EQ(client.ask("/lamp.gif", host, "HEAD").header("Content-Length"), "200000");
  const Answer same = client.ask("/lamp.gif", host + "If-None-Match: \"x\", W/" + tag + "\r\n");
  EXPECT_EQ(same.status, 304);
  EXPECT_EQ(same.header("ETag"), tag);
  expect_common_headers(same);
  const std::string date = "If-Modified-Since: " + first.header("Last-Modified") + "\r\n";
  EXPECT_EQ(client.ask("/lamp.gif", host + date).status, 304);
  EXPECT_EQ(client.ask("/lamp.gif", host + "If-None-Match: \"x\"\r\n" + date).status, 200);

  write("lamp.gif", "GIF");
  const Answer changed = client.ask("/lamp.gif", host + "If-None-Match: " + tag + "\r\n");
  EXPECT_EQ(changed.status, 200);
  EXPECT_EQ(changed.body, "GIF");
}

TEST_F(PagesTest, SendsNothingButPlainFilesOfTheFolder) {
  const ScratchFolder outside;
  std::ofstream(outside / "secret.gif") << "secret";
  write("htaccess.txt", "anna:secret\r\n");
  write("htaccess.txt.new", "anna:secret\r\n");
  write(".hidden.gif", "secret");
  write("index.html", "template");
  fs::create_directory(folder / "sub.gif");
  fs::create_symlink(outside / "secret.gif", folder / "link.gif");
  fs::create_directory_symlink(outside.path(), folder / "linked");
  fs::create_hard_link(folder / "htaccess.txt", folder / "copy.txt");
  ASSERT_EQ(mkfifo((folder / "pipe.gif").c_str(), 0600), 0);
  fs::create_directory(folder / "pictures");
  std::ofstream(folder / "pictures/lamp.gif") << "GIF";
  start();
  EXPECT_EQ(get("/pictures/lamp.gif").body, "GIF");
  for (const std::string path :
       {"/htaccess.txt", "/HTACCESS.TXT", "/%68taccess.txt", "/htaccess.txt%00",
        "/htaccess.txt.new", "/copy.txt", "/.hidden.gif", "/sub.gif", "/pictures", "/pictures/",
        "/link.gif", "/linked/secret.gif", "/pipe.gif", "/nothing.gif", "/../index.gif",
        "/pictures/../pictures/lamp.gif", "http://localhost/pictures/lamp.gif"}) {
    const Answer answer = get(path);
    EXPECT_EQ(answer.body.find("secret"), std::string::npos) << path;
    EXPECT_EQ(answer.status, 404) << path << answer.body;
    expect_common_headers(answer);
  }
  EXPECT_EQ(get("/index.html").body, "index.html?") << "the template was sent for the page";
}

TEST_F(PagesTest, AnswersGetAndHeadOnly) {
  start();
  for (const std::string method :
       {"PUT", "DELETE", "OPTIONS", "TRACE", "PATCH", "get", "NONSENSE"}) {
    const Answer answer = Client(loop, port).ask("/index.html", "Host: localhost\r\n", method);
    EXPECT_EQ(answer.status, 405) << method;
    EXPECT_EQ(answer.header("Allow"), "GET, HEAD") << method;
    expect_common_headers(answer);
  }
  EXPECT_TRUE(pages.empty());
}

TEST_F(PagesTest, RefusesForeignSwitchesBeforeThePageIsAskedFor) {
  server.AllowedHosts({"house.example.org"});
  start();
  const std::string on = "/index.html?A~3~HallLamp~turnon~Hall";
  EXPECT_EQ(get(on, "Host: evil.example\r\n").status, 403);
  EXPECT_EQ(get(on, "Host: localhost\r\nOrigin: http://evil.example\r\n").status, 403);
  EXPECT_EQ(get(on, "Host: localhost\r\nReferer: http://evil.example/\r\n").status, 403);
  EXPECT_EQ(get(on, "Host: localhost\r\nSec-Fetch-Site: cross-site\r\n").status, 403);
  EXPECT_EQ(get(on, "Host: localhost\r\nORIGIN: http://localhost\r\norigin: null\r\n").status, 400);
  EXPECT_EQ(get("/in%64ex.html?turnon", "Host: evil.example\r\n").status, 403);
  EXPECT_TRUE(pages.empty());
  EXPECT_EQ(get(on, "Host: house.example.org\r\n").status, 200);
  EXPECT_EQ(get("/index.html?loadroomHall", "Host: evil.example\r\n").status, 200);
}

}  // namespace
}  // namespace homewarden::testing
