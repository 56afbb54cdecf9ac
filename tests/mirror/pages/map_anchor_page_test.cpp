#include "pages/map_anchor_page.h"

#include <gtest/gtest.h>

#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

QByteArray PageOf(const std::vector<Event> &events) {
  const Catalogue catalogue(events);
  return MapAnchorPage({"MAP"}, ListEvents(catalogue, [](const Event &) { return true; }));
}

Event EventAt(const QString &place) {
  Event event = Castaic();
  event.id = "pr1";
  event.place = place;
  return event;
}

TEST(MapAnchorPage, WritesARowInTheFormThatTheScannerReads) {
  const TimeZone zone("UTC");
  const QByteArray page = PageOf({EventAt("37km S of Boca de Yuma, Dominican Republic")});
  EXPECT_TRUE(
      page.contains("\n<TR><TD><A HREF=\"recenteqs/Maps/118-34.html\">MAP</A></TD><TD ALIGN=right> 2.0 "
                    "<A HREF=\"recenteqs/Quakes/pr1.html\">2018/02/07 01:26:13 34.495N 118.667W 26.5</A> "
                    "37 km (23 mi) S of Boca de Yuma, Dominican Republic </TD></TR>\n"))
      << page.constData();
}

TEST(MapAnchorPage, LeadsABrowserFromItsLinksToTheRoot) {
  for (const QByteArray &page : {PageOf({}), PageOf({Castaic()})})
    EXPECT_TRUE(page.contains("<base href=\"/\"></head>"));
}

TEST(MapAnchorPage, HasNoMarkerButThoseOfItsRows) {
  EXPECT_EQ(PageOf({}).count("MAP<"), 2) << "the title's, which is the test's own";
  EXPECT_EQ(PageOf({EventAt("X")}).count("MAP<"), 3);
  EXPECT_EQ(PageOf({EventAt("NEAR THE MAP")}).count("MAP<"), 3);
  EXPECT_EQ(PageOf({EventAt("MAP</A></TD><TD ALIGN=right>")}).count("MAP<"), 3);
}

TEST(MapAnchorPage, IsWellFormedButForOneAttributeAndItsBase) {
  for (QByteArray page : {PageOf({}), PageOf({Castaic(), EventAt("<b>&amp;")})}) {
    page.replace("ALIGN=right", "ALIGN=\"right\"").replace("<base href=\"/\">", "");
    EXPECT_EQ(FaultOf(page), "");
  }
}

}  // namespace
}  // namespace borvane::mirror
