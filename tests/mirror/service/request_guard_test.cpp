#include "service/request_guard.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(IsFromAnotherSite, DoesNotSuspectTheMonitorOrAPersonsBrowser) {
  EXPECT_FALSE(IsFromAnotherSite({}));
  EXPECT_FALSE(IsFromAnotherSite({.fetch_site = "none"}));
  EXPECT_FALSE(IsFromAnotherSite({.fetch_site = "same-origin"}));
}

TEST(IsFromAnotherSite, SeesAnyOriginAndAnyOtherSite) {
  EXPECT_TRUE(IsFromAnotherSite({.has_origin = true}));
  EXPECT_TRUE(IsFromAnotherSite({.has_origin = true, .fetch_site = "same-origin"}));
  for (const char *site : {"cross-site", "same-site", "NONE", "nonenone", "none, cross-site", "anything"})
    EXPECT_TRUE(IsFromAnotherSite({.fetch_site = site})) << site;
}

TEST(IsKnownHost, KnowsAddressesAndNamesUnderLocalhost) {
  for (const char *host : {"", "localhost", "localhost:17650", "maker.localhost", "MAKER.LocalHost:17650",
                           "a.b.localhost", "127.0.0.1", "192.0.2.10:17650", "[::1]", "[2001:db8::1]:80"})
    EXPECT_TRUE(IsKnownHost(host, {})) << host;
}

TEST(IsKnownHost, KnowsNoOtherNameThanTheGivenOnes) {
  const QStringList names = {"service.school", "quakes"};
  for (const char *host : {"service.school", "Service.School:17650", "quakes:80", "maker.service.school",
                           "Maker.Service.School:80", "southern.quakes"})
    EXPECT_TRUE(IsKnownHost(host, names)) << host;
  for (const char *host : {"evil.example", "evil.example:17650", "localhost.evil.example", "notlocalhost", "school",
                           "other.service.school", "maker.evil.example", "maker", "maker.school",
                           "127.0.0.1.evil.example", "[evil.example]", ":17650", "[", "."})
    EXPECT_FALSE(IsKnownHost(host, names)) << host;
}

}  // namespace
}  // namespace borvane::mirror
