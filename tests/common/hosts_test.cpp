#include "common/hosts.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(MirrorHost, IsTheEndpointsLabelUnderLocalhostWithThePort) {
  EXPECT_EQ(MirrorHost(Endpoint::National), "national.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Southern), "southern.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Northern), "northern.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::PacificNorthwest), "pacificnorthwest.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Alaska), "alaska.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Utah), "utah.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Memphis), "memphis.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Northeastern), "northeastern.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::PuertoRico), "puertorico.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Maker), "maker.localhost:17650");
  EXPECT_EQ(MirrorHost(Endpoint::Maker, 80), "maker.localhost:80");
}

TEST(EndpointHosts, HaveTheNamesUnderWhichTheSettingsKeepThem) {
  std::string names;
  for (const EndpointHost &row : endpoint_hosts)
    names.append(row.name).append(" ");
  EXPECT_EQ(names, "National Southern Northern PacificNorthwest Alaska Utah Memphis Northeastern PuertoRico Maker ");
}

TEST(MirrorSite, IsAnAddressOnTheMirrorForTheBrowser) {
  EXPECT_EQ(MirrorSite(BrowserEndpoint::StrongMotion), "http://strongmotion.localhost:17650");
  EXPECT_EQ(MirrorSite(BrowserEndpoint::WorldList), "http://worldlist.localhost:17650");
  EXPECT_EQ(MirrorSite(BrowserEndpoint::WorldList, 80), "http://worldlist.localhost:80");
}

TEST(DefaultSite, IsTheMirrorForEarthquakesAndAPublicSiteForAllElse) {
  EXPECT_EQ(DefaultSite(BrowserEndpoint::StrongMotion), "http://strongmotion.localhost:17650");
  EXPECT_EQ(DefaultSite(BrowserEndpoint::WorldList), "http://worldlist.localhost:17650");
  EXPECT_EQ(DefaultSite(BrowserEndpoint::FeltForms), "http://feltforms.localhost:17650");
  EXPECT_EQ(DefaultSite(BrowserEndpoint::Maps), "https://maps.google.com");
  EXPECT_EQ(DefaultSite(BrowserEndpoint::Encyclopedia), "https://en.wikipedia.org");
  EXPECT_EQ(DefaultSite(BrowserEndpoint::WebSearch), "https://www.google.com");
}

TEST(BrowserHosts, AreInTheOrderOfTheirEndpointsAndHaveTheNamesOfTheSettings) {
  std::string names;
  for (std::size_t i = 0; i < browser_hosts.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(browser_hosts[i].endpoint), i);
    names.append(browser_hosts[i].name).append(" ");
  }
  EXPECT_EQ(names, "StrongMotion WorldList FeltForms Maps Encyclopedia WebSearch ");
}

TEST(EndpointOfMirrorHost, FindsEveryEndpointByItsHost) {
  for (const EndpointHost &row : endpoint_hosts)
    EXPECT_EQ(EndpointOfMirrorHost(MirrorHost(row.endpoint)), row.endpoint) << row.name;
}

TEST(EndpointOfMirrorHost, TakesAHostInAnyCaseAndWithoutAPort) {
  EXPECT_EQ(EndpointOfMirrorHost("Memphis.LocalHost"), Endpoint::Memphis);
  EXPECT_EQ(EndpointOfMirrorHost("MEMPHIS.localhost:80"), Endpoint::Memphis);
}

TEST(EndpointOfMirrorHost, GoesByTheFirstLabelOfEveryName) {
  for (const char *host : {"memphis", "memphis:80", "memphis.example", "Memphis.Quakes.School:17650",
                           "memphis.localhost.example", "memphis.southern.example", "memphis."})
    EXPECT_EQ(EndpointOfMirrorHost(host), Endpoint::Memphis) << host;
}

TEST(EndpointOfMirrorHost, FindsNothingForAnyOtherHost) {
  for (const char *host : {"", ".", ":80", "localhost", "127.0.0.1:17650", "[::1]:17650", "x.memphis.localhost",
                           ".localhost", ".memphis", "memphislocalhost", "memphi.example", "memphis2.example"})
    EXPECT_EQ(EndpointOfMirrorHost(host), std::nullopt) << host;
}

}  // namespace
}  // namespace borvane
