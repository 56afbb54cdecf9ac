#include "feed/hosts.h"

#include <gtest/gtest.h>

#include "core/program.h"
#include "support/rig.h"

namespace borvane {
namespace {

TEST(HostOf, ReturnsTheHostStoredUnderEachEndpointsName) {
  Rig rig;
  for (const EndpointHost &row : endpoint_hosts) {
    EXPECT_EQ(HostOf(row.endpoint), MirrorHost(row.endpoint));
    const std::string other = std::string(row.name) + ".example";
    rig.store().Put(hosts_key, row.name, other);
    EXPECT_EQ(HostOf(row.endpoint), other);
    EXPECT_EQ(AddressOf(row.endpoint, "/x y|z"), "http://" + other + "/x y|z");
  }
}

TEST(HostOf, ReturnsTheDefaultForAnEmptyText) {
  Rig rig;
  rig.store().Put(hosts_key, "Maker", "");
  EXPECT_EQ(HostOf(Endpoint::Maker), "maker.localhost:17650");
}

TEST(SiteOf, IsTheSiteStoredUnderEachNameWithItsScheme) {
  Rig rig;
  for (const BrowserHost &row : browser_hosts) {
    EXPECT_EQ(SiteOf(row.endpoint), DefaultSite(row.endpoint));
    rig.store().Put(hosts_key, row.name, "");
    EXPECT_EQ(SiteOf(row.endpoint), DefaultSite(row.endpoint));
    const std::string other = "https://" + std::string(row.name) + ".example:8443";
    rig.store().Put(hosts_key, row.name, other);
    EXPECT_EQ(SiteOf(row.endpoint), other);
    EXPECT_EQ(AddressOf(row.endpoint, "/x y|z"), other + "/x y|z");
  }
}

TEST(SiteOf, GivesAHostWithoutASchemePlainHttp) {
  Rig rig;
  rig.store().Put(hosts_key, "WorldList", "example.org");
  EXPECT_EQ(AddressOf(BrowserEndpoint::WorldList, "/"), "http://example.org/");
}

TEST(MakerMail, IsTheStoredAddressOrOneThatNobodyOwns) {
  Rig rig;
  EXPECT_EQ(MakerMail(), "borvane@nalvorin.example");
  rig.store().Put(hosts_key, "MakerMail", "quakes@school.example");
  EXPECT_EQ(MakerMail(), "quakes@school.example");
  rig.store().Put(hosts_key, "MakerMail", "");
  EXPECT_EQ(MakerMail(), "borvane@nalvorin.example");
}

TEST(UsesMirror, IsTrueUntilTheStoreNamesAnotherHostForEveryEndpoint) {
  Rig rig;
  for (const EndpointHost &row : endpoint_hosts) {
    EXPECT_TRUE(UsesMirror());
    rig.store().Put(hosts_key, row.name, "example.org");
  }
  EXPECT_FALSE(UsesMirror());
}

}  // namespace
}  // namespace borvane
