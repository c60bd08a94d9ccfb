#include <gtest/gtest.h>

#include "platform/http/access_rules.h"
#include "platform/http/gate.h"
#include "platform/http/home_networks.h"
#include "platform/http/host_name.h"
#include "tests/platform/virtual_loop.h"

namespace homewarden::testing {
namespace {

using namespace http;
using namespace std::chrono_literals;

Hop hop_of(const std::string& forwarded, const std::string& x_for, const std::string& x_proto) {
  return last_hop({forwarded, x_for, x_proto, true});
}

// A client that writes these headers itself takes another one's address.
TEST(ForwardedTest, TakesTheLastHopOnlyAndNothingThatCannotBeReliedOn) {
  struct Case {
    const char* forwarded;
    const char* x_for;
    const char* from;  // "" for nobody's
  };
  for (const auto& [forwarded, x_for, from] : std::initializer_list<Case>{
           {"", "10.0.0.1, 203.0.113.5:4711 ", "203.0.113.5"},
           {"", "10.0.0.1,\t2001:db8::1", "2001:db8::1"},
           {"", "[2001:db8::1]:4711", "2001:db8::1"},
           {"", "[10.0.0.1]", ""},
           {"", "10.0.0.1,", ""},
           {"", "10.0.0.1, unknown", ""},
           {"for=203.0.113.5", "", "203.0.113.5"},
           {"for=10.0.0.1, FOR=\"[2001:db8::1]:4711\";proto=https", "", "2001:db8::1"},
           {"proto=http ; by=_x; for = \"203.0.113\\.5\"", "", "203.0.113.5"},
           {"for=10.0.0.1, proto=https", "", ""},
           {"for=10.0.0.1, for=_hidden", "", ""},
           {"for=10.0.0.1;for=203.0.113.5", "", ""},
           // A quote of the client's around what the proxy adds.
           {"for=10.0.0.1;x=\", for=203.0.113.5", "", ""},
           {"for=10.0.0.1;x=\",for=\"[2001:db8::1]\"", "", ""},
           {"garbage, for=10.0.0.1", "", ""},
           // The one that the proxy does not write is the client's.
           {"for=10.0.0.1", "203.0.113.5", ""},
           {"for=203.0.113.5", "10.0.0.1, 203.0.113.5", "203.0.113.5"},
           {"", "", ""}}) {
    const auto address = hop_of(forwarded, x_for, "").from;
    EXPECT_EQ(address ? text_of(*address) : "", from) << forwarded << " / " << x_for;
  }
  EXPECT_EQ(hop_of("", "", "http, HTTPS").https, true);
  EXPECT_EQ(hop_of("proto=https, proto=http", "", "").https, false);
  EXPECT_EQ(hop_of("proto=https", "", "http").https, std::nullopt);
  EXPECT_EQ(hop_of("for=10.0.0.1", "", "https").https, true);
  EXPECT_EQ(hop_of("", "", "gopher").https, std::nullopt);
}

// An internet visitor behind a proxy is taken for this machine, or a phone of the house for a
// stranger.
TEST(VisitorTest, BelievesTrustedProxiesAlone) {
  int asked = 0;
  std::vector<NetworkPrefix> on_link{*parse_prefix("2001:db8:1:2::9/64"),
                                     *parse_prefix("203.0.113.9/24"),
                                     {*parse_address("8.8.8.8"), 99}};
  HomeNetworks home([&] { return ++asked, on_link; }, false);
  const auto is_at_home = [&](const char* from, const char* x_for, bool here = false) {
    RequestHead head;
    head.from = *parse_address(from);
    head.from_here = here;
    if (x_for != nullptr) head.forwarded.take("x-forwarded-FOR", x_for);
    const Visitor visitor = visitor_of(head, {*parse_prefix("127.0.0.0/8")});
    return home.contains(visitor, 0ms) && !visitor.by_unknown_proxy;
  };
  EXPECT_TRUE(is_at_home("127.0.0.1", "192.168.1.7"));
  EXPECT_FALSE(is_at_home("127.0.0.1", "192.168.1.7, 8.8.8.8", true));
  EXPECT_FALSE(is_at_home("127.0.0.1", "8.8.8.8, 192.168.1.2")) << "a second proxy, in the house";
  EXPECT_FALSE(is_at_home("127.0.0.1", "", true)) << "a proxy that does not tell";
  EXPECT_FALSE(is_at_home("127.0.0.1", nullptr, true)) << "a proxy that does not tell";
  EXPECT_FALSE(is_at_home("192.168.1.2", "192.168.1.7")) << "a proxy that nobody named";
  EXPECT_FALSE(is_at_home("8.8.8.8", "127.0.0.1"));
  EXPECT_TRUE(is_at_home("8.8.8.8", nullptr, true));
  EXPECT_TRUE(is_at_home("2001:db8:1:2:ffff::1", nullptr));
  EXPECT_FALSE(is_at_home("2001:db8:1:3::1", nullptr));
  EXPECT_TRUE(is_at_home("127.0.0.1", "203.0.113.77"));
  EXPECT_FALSE(is_at_home("100.64.0.1", nullptr));
  EXPECT_EQ(asked, 1) << "the system is asked with each request";

  on_link = {*parse_prefix("2001:db8:7::/64")};  // the provider gave the house another network
  const Visitor phone{*parse_address("2001:db8:7::5")};
  EXPECT_FALSE(home.contains(phone, 5s));
  EXPECT_TRUE(home.contains(phone, 60s)) << "networks are looked at once for all";
  EXPECT_TRUE(HomeNetworks({}, true).contains({*parse_address("100.127.1.1")}, 0ms));
}

// A name that was accepted is never met.
TEST(AccessRulesTest, KnowsANameWithTheDotOfTheRoot) {
  EXPECT_TRUE(is_own_host("house.example.org", read_access({{"House.example.org."}}).hosts));
}

// Scripts are locked out, or a link in a mail switches a lamp.
TEST(CauseTest, WantsAProofFromWhatShowsForeignContent) {
  for (const char* const name :
       {"Mozilla/5.0 (X11; Linux x86_64; rv:120.0) Gecko/20100101 Firefox/120.0",
        "Mozilla/5.0 (SMART-TV; Linux) AppleWebKit/538.1 TV Safari/538.1", "Mozilla/4.0",
        "Mozilla/4.0 (compatible; ms-office; MSOffice 16)",
        "Microsoft Office/16.0 (Windows NT 10.0)",
        "Mozilla/5.0 (Windows NT 10.0) Gecko/20100101 Thunderbird/115.0",
        "Mozilla/4.0 (Outlook; PowerShell)", "Opera/9.80 (J2ME/MIDP)", "WhatsApp/2.23.20.0 A"})
    EXPECT_TRUE(shows_foreign_content(name)) << name;
  for (const char* const name :
       {"Mozilla/5.0 (Windows NT; Windows NT 10.0; en-US) WindowsPowerShell/5.1.19041.1",
        "Mozilla/5.0 (Linux; Debian 12) PowerShell/7.4.0",
        "Mozilla/4.0 (compatible; Win32; WinHttp.WinHttpRequest.5)", "curl/7.88.1",
        "python-requests/2.28", ""})
    EXPECT_FALSE(shows_foreign_content(name)) << name;
}

class GateTest : public ::testing::Test {
 protected:
  static GateRules rules() {
    GateRules rules;
    rules.names = {"house.example.org"};
    rules.origins = {"https://dash.example:443"};
    rules.proxies = {*parse_prefix("127.0.0.1")};
    rules.switches = [](const auto&, const auto& query) {
      return query == "turnon" ? std::optional(WebSwitch{}) : std::nullopt;
    };
    rules.state_pages = [](const auto& page, const auto& query) {
      return page == "file" ? std::nullopt
                            : std::optional(StatePage{"home", query == "remembered"});
    };
    return rules;
  }

  RequestHead navigation(const std::string& uri) {
    RequestHead head;
    head.from = *parse_address("192.168.1.7");
    head.method = "GET";
    set_target(head, uri);
    head.host = "192.168.1.5:8080";
    head.user_agent = "Mozilla/5.0";
    head.takes_html = true;
    return head;
  }
  // "page?query", with "!" when no states may be shown; or the status.
  std::string ask(const RequestHead& head) {
    auto verdict = gate.check(head, clock);
    if (auto* refused = std::get_if<Refusal>(&verdict)) {
      refusal = std::move(*refused);
      return std::to_string(refusal.status);
    }
    admission = std::get<Admission>(std::move(verdict));
    return admission.page + "?" + admission.query + (admission.nameless ? "!" : "");
  }

  VirtualLoop clock;
  Gate gate{rules()};
  Admission admission;
  Refusal refusal;
};

// A foreign page changes what the televisions show, or reads what is on.
TEST_F(GateTest, ShowsForeignPagesNothingAndTheirVisitorsTheHomePage) {
  RequestHead head = navigation("/room?remembered");
  EXPECT_EQ(ask(head), "home?") << "a page that forbids the Referer";
  head.uri = "/room?x";
  EXPECT_EQ(ask(head), "room?x");
  head.cookies = "homewarden=1;";
  head.uri = "/room?remembered";
  EXPECT_EQ(ask(head), "room?remembered");
  head.referer = "http://evil.example/";
  EXPECT_EQ(ask(head), "home?");
  head.takes_html = false;
  EXPECT_EQ(ask(head), "403") << "a picture of a foreign page";
  EXPECT_NE(refusal.reason.find("https://dash.example:443"), std::string::npos);
  head.uri = "/file?";
  EXPECT_EQ(ask(head), "file?");
  head = navigation("/room?remembered");
  head.fetch_site = "none";
  head.in_advance = true;
  EXPECT_EQ(ask(head), "503") << "what a page names is fetched in advance as if it had been typed";
  head = navigation("/room?x");
  head.fetch_site = "cross-site";
  head.fetch_mode = "navigate";
  head.fetch_dest = "document";
  EXPECT_EQ(ask(head), "home?");
  head.fetch_dest = "iframe";
  EXPECT_EQ(ask(head), "403");
  head = navigation("/room?x");
  head.host = "evil.example";  // a name that points here
  EXPECT_EQ(ask(head), "home?!");
  head.fetch_site = "same-origin";
  head.fetch_mode = "cors";
  EXPECT_EQ(ask(head), "403");
  EXPECT_NE(refusal.reason.find("house.example.org"), std::string::npos);
}

// What a dashboard may is another page's too, or it cannot read what it is answered.
TEST_F(GateTest, LetsOriginsThatAreAllowedLookAndSwitch) {
  for (const char* const uri : {"/room?x", "/room?turnon"}) {
    RequestHead head = navigation(uri);
    head.fetch_site = "cross-site";
    head.fetch_mode = "cors";
    head.origin = "https://dash.example";
    EXPECT_EQ(ask(head), std::string(uri).substr(1));
    EXPECT_EQ(admission.headers.at(0).second, "https://dash.example");
    for (const char* const other : {"https://dash.example.evil.example", "http://dash.example",
                                    "https://dash.example:444", "null"}) {
      head.origin = other;
      EXPECT_EQ(ask(head), "403") << other;
    }
    head.origin.reset();
    head.referer = "https://dash.example/";
    EXPECT_EQ(ask(head), std::string(uri).substr(1));
  }
}

// A proxy's own Host makes every press a 403.
TEST_F(GateTest, PressesBehindAProxyThatTellsTheScheme) {
  RequestHead head = navigation("/room?turnon");
  head.from = *parse_address("127.0.0.1");
  head.forwarded.take("X-Forwarded-For", "192.168.1.7");
  head.forwarded.take("X-Forwarded-Proto", "https");
  head.host = "127.0.0.1:8080";
  head.origin = "https://house.example.org";
  EXPECT_EQ(ask(head), "403");
  head.fetch_site = "same-origin";
  EXPECT_EQ(ask(head), "room?turnon");
  EXPECT_EQ(text_of(admission.from), "192.168.1.7");
  head.fetch_site.reset();
  head.host = "house.example.org";
  EXPECT_EQ(ask(head), "room?turnon");
  head.origin = "http://house.example.org";
  EXPECT_EQ(ask(head), "403") << "another server's page, without encryption";
  head.forwarded = {};
  EXPECT_EQ(ask(head), "403");
  EXPECT_NE(refusal.reason.find("X-Forwarded-For"), std::string::npos);
}

}  // namespace
}  // namespace homewarden::testing
