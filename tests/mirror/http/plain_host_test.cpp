#include "http/plain_host.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(IsPlainHost, KnowsNamesAndAddressesWithAndWithoutAPort) {
  for (const char *host :
       {"alaska.localhost:17650", "127.0.0.1", "[::1]", "[2001:db8::1]:80", "a_b-c.example:65535", "x:0"})
    EXPECT_TRUE(IsPlainHost(host)) << host;
}

TEST(IsPlainHost, RefusesEverythingElse) {
  for (const char *host : {"",     ":80",  "a b",  "a/b", "a\"b",    "a<b",      "a'b",          "a&b",
                           "a@b",  "a?b",  "a%41", "x:",  "x:65536", "x:999999", "x:-1",         "x:1:2",
                           "[::1", "::1]", "[]",   "[x]", "x\n",     "x\r\n",    "\xe9.example", "a,b"})
    EXPECT_FALSE(IsPlainHost(host)) << host;
}

TEST(IsPlainHost, RefusesANameThatIsLongerThanAnyIs) {
  EXPECT_TRUE(IsPlainHost(QByteArray(253, 'x') + ":80"));
  EXPECT_FALSE(IsPlainHost(QByteArray(254, 'x')));
}

}  // namespace
}  // namespace borvane::mirror
