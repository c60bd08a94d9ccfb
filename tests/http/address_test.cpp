#include "platform/http/address.h"

#include <gtest/gtest.h>

namespace homewarden {
namespace {

struct PrivateCase {
  const char* address;
  bool is_private;
};

// One bit wrong in a mask lets the internet in or the household out.
TEST(AddressTest, KnowsPrivateNetworksByTheirEdges) {
  for (const auto& [text, expected] : {
           PrivateCase{"127.0.0.1", true},
           {"127.255.255.255", true},
           {"126.255.255.255", false},
           {"128.0.0.1", false},
           {"10.0.0.0", true},
           {"10.255.255.255", true},
           {"9.255.255.255", false},
           {"11.0.0.0", false},
           {"172.16.0.0", true},
           {"172.31.255.255", true},
           {"172.15.255.255", false},
           {"172.32.0.0", false},
           {"192.168.0.1", true},
           {"192.167.1.1", false},
           {"192.169.0.0", false},
           {"169.254.7.7", true},
           {"169.253.0.1", false},
           {"0.0.0.0", false},
           {"100.64.0.1", false},
           {"8.8.8.8", false},
           {"::1", true},
           {"::2", false},
           {"::", false},
           {"fc00::1", true},
           {"fdff:ffff::1", true},
           {"fbff::1", false},
           {"fe00::1", false},
           {"fe80::1", true},
           {"febf::1", true},
           {"fec0::1", false},
           {"2001:db8::1", false},
           {"::ffff:192.168.1.5", true},
           {"::ffff:8.8.8.8", false},
           {"::192.168.1.5", false},
           {"64:ff9b::192.168.1.5", false},
           {"2002:c0a8:0101::1", false},
       }) {
    const auto address = parse_address(text);
    ASSERT_TRUE(address) << text;
    EXPECT_EQ(is_private(*address), expected) << text;
  }
}

TEST(AddressTest, TakesTheMappedFormForTheSameAddress) {
  EXPECT_EQ(parse_address("::ffff:10.0.0.1"), parse_address("10.0.0.1"));
  EXPECT_FALSE(parse_address("10.0.0"));
  EXPECT_FALSE(parse_address("10.0.0.1 "));
  EXPECT_FALSE(parse_address(std::string("10.0.0.1\0.evil", 14)));
}

// A household shares a private network; whoever attacks from outside owns 64 bits of addresses.
TEST(AddressTest, CountsANetworkOfTheInternetAsOne) {
  const auto network = [](const char* text) { return network_of(*parse_address(text)); };
  EXPECT_EQ(network("2001:db8:1:2::1"), network("2001:db8:1:2:ffff::9"));
  EXPECT_NE(network("2001:db8:1:2::1"), network("2001:db8:1:3::1"));
  EXPECT_NE(network("fe80::1"), network("fe80::2"));
  EXPECT_NE(network("203.0.113.1"), network("203.0.113.2"));
}

}  // namespace
}  // namespace homewarden
