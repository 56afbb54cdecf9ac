#include "pages/index_page.h"

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "support/mirror/sample_pages.h"

namespace borvane::mirror {
namespace {

TEST(IndexPage, IsWellFormedAndLinksEachArea) {
  const QByteArray page = IndexPage(Catalogue(SampleEvents()), "<b>&.geojson", 8080);
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("1306 events from &lt;b&gt;&amp;.geojson"));
  EXPECT_TRUE(page.contains("href=\"http://memphis.localhost:8080/recenteqs/Quakes/quakes0.html\""));
  EXPECT_EQ(FaultOf(IndexPage(Catalogue(), "nothing", 8080)), "");
}

}  // namespace
}  // namespace borvane::mirror
