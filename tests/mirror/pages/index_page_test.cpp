#include "pages/index_page.h"

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

TEST(IndexPage, IsWellFormedAndLinksEachArea) {
  const QByteArray page = IndexPage(Catalogue(SampleEvents()), {.origin = "<b>&.geojson"}, PageHost("", 8080));
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("1306 events from &lt;b&gt;&amp;.geojson"));
  EXPECT_TRUE(page.contains("<a href=\"/recenteqs/Maps/Los_Angeles.html\">Los Angeles</a>"));
  EXPECT_TRUE(page.contains("href=\"http://memphis.localhost:8080/recenteqs/Quakes/quakes0.html\""));
  EXPECT_EQ(FaultOf(IndexPage(Catalogue(), {.origin = "nothing"}, PageHost("", 8080))), "");
}

TEST(IndexPage, LinksNoAreaThatHasNoAddressBesideThatOfAComputer) {
  const QByteArray page = IndexPage(Catalogue(), {.origin = "nothing"}, PageHost("192.0.2.10:8080", 8080));
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("<li>Central US</li>"));
  EXPECT_TRUE(page.contains("<li>Pacific Northwest</li>"));
  EXPECT_EQ(page.count("<li><a href=\"/"), 16);
}

TEST(IndexPage, NamesTheSourcesAndTheTimeOfTheirData) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  const PageFacts facts = {.origin = "the last 7 days of A, B",
                           .data_time = Castaic().origin_time,
                           .sources = {{"A", "The Survey"}, {"B", "<Centre> & sons"}}};
  const QByteArray page = IndexPage(Catalogue({Castaic()}), facts, PageHost("", 8080));
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(
      page.contains("1 event from the last 7 days of A, B. The newest one was at 2018/02/06 17:26:13, local time "
                    "(UTC-08:00). Data as of 2018/02/06 17:26:13 (UTC-08:00)."));
  EXPECT_TRUE(page.contains("<li>A: The Survey</li>\n<li>B: &lt;Centre&gt; &amp; sons</li>"));
  EXPECT_FALSE(page.contains("U.S. Geological Survey"));
}

TEST(IndexPage, SaysThatTheSampleIsOne) {
  const PageFacts facts = {.origin = "the bundled sample catalogue", .is_sample = true};
  EXPECT_TRUE(IndexPage(Catalogue({Castaic()}), facts, PageHost("", 1))
                  .contains("These events are a bundled sample, not today's."));
}

}  // namespace
}  // namespace borvane::mirror
