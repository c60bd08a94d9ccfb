#include "platform/http/address.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <tuple>

namespace homewarden::http {
namespace {

// One bit wrong in a mask lets the internet in or the household out.
TEST(AddressTest, KnowsPrivateNetworksByTheirEdges) {
  for (const char* const text :
       {"127.0.0.1", "127.255.255.255", "10.0.0.0", "10.255.255.255", "172.16.0.0",
        "172.31.255.255", "192.168.0.1", "169.254.7.7", "::1", "fc00::1", "fdff:ffff::1", "fe80::1",
        "febf::1", "::ffff:192.168.1.5"})
    EXPECT_TRUE(is_private(*parse_address(text))) << text;
  for (const char* const text :
       {"126.255.255.255", "128.0.0.1", "9.255.255.255", "11.0.0.0", "172.15.255.255", "172.32.0.0",
        "192.167.1.1", "192.169.0.0", "169.253.0.1", "0.0.0.0", "100.64.0.1", "8.8.8.8"})
    EXPECT_FALSE(is_private(*parse_address(text))) << text;
  for (const char* const text :
       {"::2", "::", "fbff::1", "fe00::1", "fec0::1", "2001:db8::1", "::ffff:8.8.8.8",
        "::192.168.1.5", "64:ff9b::192.168.1.5", "2002:c0a8:0101::1"})
    EXPECT_FALSE(is_private(*parse_address(text))) << text;
}

// Against the reader of the system: whoever writes an address in another way must not be let in.
TEST(AddressTest, ReadsAddressesAsTheSystemDoes) {
  std::vector<std::string> texts{"1.2.3.4",   "01.2.3.4",   "1.2.3.256", "1.2.3.4.5",
                                 "1.2.3.",    ".1.2.3.4",   "1.2.3.4 ",  "1..2.3",
                                 "0x1.2.3.4", "1.2.3.0004", "+1.2.3.4"};
  for (const std::string head :
       {"", "1", "1:", ":1", "fe80:", "0001:2:3", "12345", "1:2:3:4:5:6:7", "g"})
    for (const std::string middle : {"", ":", "::", ":::"})
      for (const std::string tail :
           {"", "1", "1:2", "2:", "1.2.3.4", "a:1.2.3.4", "1.2.3.4:5", "1::2", "2:3:4:5:6:7:8",
            "2:3:4:5:6:7", "2:3:4:5:6:1.2.3.4", "FFFF", "00000"})
        texts.push_back(head + middle + tail);
  for (const auto& text : texts) {
    Address expected;
    in_addr v4{};
    const bool is_v4 = inet_pton(AF_INET, text.c_str(), &v4) == 1;
    if (is_v4) {
      expected.bytes[10] = expected.bytes[11] = 0xff;
      std::memcpy(expected.bytes.data() + 12, &v4, sizeof v4);
    }
    const bool is_any = is_v4 || inet_pton(AF_INET6, text.c_str(), expected.bytes.data()) == 1;
    EXPECT_EQ(parse_address(text), is_any ? std::optional(expected) : std::nullopt) << text;
    std::array<char, INET6_ADDRSTRLEN> written{};
    inet_ntop(AF_INET6, expected.bytes.data(), written.data(), written.size());
    const std::string whole = written.data();
    const bool is_mixed = whole.find('.') != std::string::npos;  // IPv4 as a part of IPv6
    if (is_v4 || !is_mixed) {
      EXPECT_EQ((is_v4 ? "::ffff:" : "") + text_of(expected), whole);
    }
  }
}

TEST(AddressTest, TakesTheMappedFormForTheSameAddress) {
  EXPECT_EQ(parse_address("::ffff:10.0.0.1"), parse_address("10.0.0.1"));
  for (const std::string& text :
       {std::string("10.0.0"), std::string("10.0.0.1 "), std::string("10.0.0.1\0.evil", 14)})
    EXPECT_FALSE(parse_address(text)) << text;
}

// Whoever attacks, from outside or from a guest's computer, has 64 bits of addresses.
TEST(AddressTest, CountsANetworkOfIPv6AsOne) {
  const auto network = [](const char* text) { return network_of(*parse_address(text)); };
  EXPECT_EQ(network("2001:db8:1:2::1"), network("2001:db8:1:2:ffff::9"));
  EXPECT_NE(network("2001:db8:1:2::1"), network("2001:db8:1:3::1"));
  EXPECT_EQ(network("fe80::1"), network("fe80::2"));
  EXPECT_EQ(network("fd00::1"), network("fd00::ffff:2"));
  EXPECT_NE(network("::1"), network("::2"));
  EXPECT_NE(network("203.0.113.1"), network("203.0.113.2"));
}

// One bit wrong in a network lets strangers in.
TEST(AddressTest, ReadsNetworksAndKnowsTheirEdges) {
  for (const auto& [network, inside, outside] :
       {std::tuple("100.64.0.0/10", "100.127.255.255", "100.128.0.0"),
        {"192.168.1.77/24", "192.168.1.255", "192.168.2.0"},
        {"10.0.0.1", "10.0.0.1", "10.0.0.2"},
        {"2001:db8::1/33", "2001:db8:7fff::", "2001:db8:8000::"},
        {"::1", "::1", "::2"}}) {
    ASSERT_TRUE(parse_prefix(network)) << network;
    EXPECT_TRUE(parse_prefix(network)->contains(*parse_address(inside))) << network;
    EXPECT_FALSE(parse_prefix(network)->contains(*parse_address(outside))) << network;
  }
  for (const char* const text : {"", "/8", "10.0.0.0/", "10.0.0.0/33", "10.0.0.0/0", "::/0",
                                 "fd00::/129", "10.0.0.0/8/8", "10.0.0.0/-1", "localhost"})
    EXPECT_FALSE(parse_prefix(text)) << text;
}

}  // namespace
}  // namespace homewarden::http
