#pragma once

#include <string>
#include <string_view>

#include "support/program/pages.h"

namespace borvane {

// Pages in the other forms that the scanners read, each with a foot that its scanner needs.

/// The page of the headline.
inline const std::string world_page = "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_all.php";

/// A row of a map list in its small form, for a weak event.
inline std::string MapRow(std::string_view magnitude = "1.1", std::string_view place = "24 km S of Cedar City, UT") {
  return R"(<A HREF="/recenteqs/Maps/113-37.html">map</A> )" + std::string(magnitude) +
         R"(  <A HREF="/recenteqs/Quakes/uu60267087.html">2018/02/06 08:56:44 37.456N 113.088W 11.1</A>    )" +
         std::string(place) + " <BR>\n";
}

/// A row of a map list in its other form, for a strong event.
inline std::string CapitalMapRow(std::string_view magnitude = "3.2",
                                 std::string_view place = "9 km NW of Milford, UT") {
  return R"(<A HREF="/recenteqs/Maps/113-38.html">MAP</A><B> )" + std::string(magnitude) +
         R"(  <A HREF="/recenteqs/Quakes/uu60267017.html">2018/02/05 01:11:54 38.444N 113.096W 0.9</A>    )" +
         std::string(place) + " </B>\n";
}

inline std::string MapPage(std::string_view rows) {
  return "<PRE>\n" + std::string(rows) + R"(<A HREF="/recenteqs/index.html">MAP</A></PRE>)" + "\n";
}

/// A row of a map anchor list.
inline std::string AnchorRow(std::string_view magnitude = "2.7",
                             std::string_view place = "9 km SSW of Tallaboa, Puerto Rico") {
  return R"(<TR><TD><A HREF="Maps/66-17.html">MAP</A></TD><TD ALIGN=right> )" + std::string(magnitude) +
         R"( <A HREF="recenteqs/Quakes/pr2018037005.html">2018/02/06 08:03:23 17.916N 66.738W 11.0</A> )" +
         std::string(place) + "</TD></TR>\n";
}

inline std::string AnchorPage(std::string_view rows) { return "<TABLE>\n" + std::string(rows) + "</TABLE>\n"; }

/// A row of a world list. The cells of magnitude and place are given with their tags, if they have any.
inline std::string WorldRow(std::string_view magnitude = "4.4",
                            std::string_view place = "19 km S of Jaco, Costa Rica") {
  return "<tr><td><a href=\"/eqcenter/recenteqsww/Maps/84-9.html\">MAP</a></td>\n<td nowrap>" + std::string(magnitude) +
         "</td>\n<td nowrap><a href=\"/eqcenter/recenteqsww/Quakes/us1000chrt.html\">2018/02/06 21:39:20</a></td>\n"
         "<td nowrap><tt> 9.443N </tt></td>\n<td nowrap><tt> 84.609W </tt></td>\n<td nowrap><tt> 3.3 </tt></td>\n<td>" +
         std::string(place) + "</td></tr>\n";
}

inline std::string Bold(std::string_view text) { return "<strong>" + std::string(text) + "</strong>"; }
inline std::string BoldAndColored(std::string_view text) {
  return "<strong><font color=\"#FF0000\">" + std::string(text) + "</font></strong>";
}

inline std::string WorldPage(std::string_view rows) {
  return "<table>\n" + std::string(rows) + "</table>\n<p>MAP leads to a map.</p>\n";
}

/// A row of a region's table.
inline std::string RegionRow(std::string_view magnitude = "3.8 ML",
                             std::string_view place = "300 km SE of Kodiak, AK") {
  const std::string link = "<a href=\"http://alaska.localhost:17650/recenteqs_sub/Quakes/ak18384056.html\">";
  return "<tr><td>" + link + "2018/02/07 00:56:19</a></td><td>" + link + std::string(magnitude) + "</a></td><td>" +
         link + std::string(place) + "</a></td></tr>";
}

inline std::string RegionPage(std::string_view rows) {
  return "<html><body><table>\n<tr><td><center>Time and Date</center></td><td><center>Magnitude</center></td>"
         "<td><center>Region</center></td></tr>\n" +
         std::string(rows) + "</table>\n</body></html>\n";
}

/// An event's page: ten characters are between each label and its value.
inline std::string EventPageText(std::string_view latitude = "61.726", std::string_view longitude = "-149.900",
                                 std::string_view depth = "35.0 km") {
  return "<html><body><dl>\n<dt>Latitude:</dt> <dd>" + std::string(latitude) + "</dd>\n<dt>Longitude:</dt> <dd>" +
         std::string(longitude) + "</dd>\n<dt>Depth:</dt> <dd>" + std::string(depth) + "</dd>\n</dl></body></html>\n";
}

}  // namespace borvane
