#include "http/client_address.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(ClientOf, IsAnIPv4AddressHoweverItIsWritten) {
  EXPECT_EQ(ClientOf(QHostAddress("10.0.0.1")), ClientOf(QHostAddress("::ffff:10.0.0.1")));
  EXPECT_NE(ClientOf(QHostAddress("10.0.0.1")), ClientOf(QHostAddress("10.0.0.2")));
}

TEST(ClientOf, IsTheNetworkOfAnIPv6Address) {
  EXPECT_EQ(ClientOf(QHostAddress("2001:db8:0:1::1")), ClientOf(QHostAddress("2001:db8:0:1:ffff::2")));
  EXPECT_NE(ClientOf(QHostAddress("2001:db8:0:1::1")), ClientOf(QHostAddress("2001:db8:0:2::1")));
}

}  // namespace
}  // namespace borvane::mirror
