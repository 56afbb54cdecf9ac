#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace borvane {

// The other list pages, with `rows` rows, each of another event. Numbers and places are those of QuakesPage.

/// An event as texts, and the strength that decides about its form.
struct PageEvent {
  std::string magnitude;
  bool is_strong = false;
  std::string id;
  std::string date;
  std::string time;
  std::string latitude;
  std::string longitude;
  std::string depth;
  std::string place;
};

inline PageEvent EventOfPage(int i) {
  constexpr std::array places = {"6 km ( 4 mi) ENE of Yucaipa, CA",     "4 km ( 2 mi) W of Castaic, CA",
                                 "11 km ( 7 mi) SSW of Ridgecrest, CA", "28 km (17 mi) NNE of Trona, CA",
                                 "2 km ( 1 mi) E of The Geysers, CA",   "61 km (38 mi) SE of Maneadero, B.C., MEX"};
  const auto text = [](const char *form, int a, int b, int c) {
    std::array<char, 64> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), form, a, b, c);
    return std::string(buffer.data(), static_cast<std::size_t>(length));
  };
  return {.magnitude = text("%d.%d", 1 + i % 5, i % 10, 0),
          .is_strong = i % 5 <= 2,  // and not the last one, which a map list would leave out
          .id = text("us%08d", 14'155'392 + i, 0, 0),
          .date = text("2018/%02d/%02d", 1 + i % 12, 1 + i % 28, 0),
          .time = text("%02d:%02d:%02d", i % 24, i % 60, i * 7 % 60),
          .latitude = text("%2d.%03dN", 32 + i % 6, i * 31 % 1000, 0),
          .longitude = text("%3d.%03dW", 114 + i % 8, i * 17 % 1000, 0),
          .depth = text("%d.%d", i % 30, i * 3 % 10, 0),
          .place = places[static_cast<std::size_t>(i) % places.size()]};
}

/// What the rows of three of the forms have in common.
inline std::string LinkOf(const PageEvent &event, const std::string &folder) {
  return "<A HREF=\"" + folder + event.id + ".html\">" + event.date + ' ' + event.time + ' ' + event.latitude + ' ' +
         event.longitude + ' ' + event.depth + "</A>";
}

inline std::string MapListPage(int rows) {
  std::string page = "<HTML><BODY><PRE>\n";
  for (int i = 0; i < rows; ++i) {
    const PageEvent event = EventOfPage(i);
    page += "<A HREF=\"/recenteqs/Maps/113-37.html\">";
    page += event.is_strong ? "MAP</A><B> " : "map</A> ";
    page += event.magnitude + "  " + LinkOf(event, "/recenteqs/Quakes/") + "    " + event.place;
    page += event.is_strong ? " </B>\n" : " <BR>\n";
  }
  return page + "<A HREF=\"/recenteqs/index.html\">MAP</A></PRE></BODY></HTML>\n";
}

inline std::string MapAnchorListPage(int rows) {
  std::string page = "<HTML><BODY><TABLE>\n";
  for (int i = 0; i < rows; ++i) {
    const PageEvent event = EventOfPage(i);
    page += "<TR><TD><A HREF=\"recenteqs/Maps/66-17.html\">MAP</A></TD><TD ALIGN=right> " + event.magnitude + ' ' +
            LinkOf(event, "recenteqs/Quakes/") + ' ' + event.place + "</TD></TR>\n";
  }
  return page + "</TABLE></BODY></HTML>\n";
}

inline std::string WorldListPage(int rows) {
  std::string page = "<html><body><table>\n";
  for (int i = 0; i < rows; ++i) {
    const PageEvent event = EventOfPage(i);
    const std::string begin = event.is_strong ? "<strong>" : "";
    const std::string end = event.is_strong ? "</strong>" : "";
    page += "<tr><td><a href=\"/recenteqs/Maps/66-17.html\">MAP</a></td>\n<td nowrap>" + begin + event.magnitude + end +
            "</td>\n<td nowrap><a href=\"/recenteqs/Quakes/" + event.id + ".html\">" + event.date + ' ' + event.time +
            "</a></td>\n";
    for (const std::string &number : {event.latitude, event.longitude, event.depth})
      page += "<td nowrap><tt> " + number + " </tt></td>\n";
    page += "<td>" + begin + event.place + end + "</td></tr>\n";
  }
  return page + "</table><p>MAP leads to a map.</p></body></html>\n";
}

/// Of which the scanner reads the first row, and looks for the table's end in all others.
inline std::string RegionTablePage(int rows) {
  std::string page = "<html><body><table>\n<tr><td><center>Region</center></td></tr>\n";
  for (int i = 0; i < rows; ++i) {
    const PageEvent event = EventOfPage(i);
    const std::string link = "<td><a href=\"http://alaska.localhost:17650/recenteqs/Quakes/" + event.id + ".html\">";
    page += "<tr>" + link + event.date + ' ' + event.time + "</a></td>" + link + event.magnitude + "</a></td>" + link +
            event.place + "</a></td></tr>\n";
  }
  return page + "</TABLE></body></html>\n";
}

}  // namespace borvane
