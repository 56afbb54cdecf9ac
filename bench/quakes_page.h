#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace borvane {

/// A list of recent earthquakes with `rows` rows, each of another event, as the regional networks write it.
inline std::string QuakesPage(int rows) {
  constexpr std::array places = {"6 km ( 4 mi) ENE of Yucaipa, CA",     "4 km ( 2 mi) W of Castaic, CA",
                                 "11 km ( 7 mi) SSW of Ridgecrest, CA", "28 km (17 mi) NNE of Trona, CA",
                                 "2 km ( 1 mi) E of The Geysers, CA",   "61 km (38 mi) SE of Maneadero, B.C., MEX"};
  std::string page = "<HTML><HEAD><TITLE>Recent earthquakes</TITLE></HEAD><BODY>\n<PRE>\n";
  for (int i = 0; i < rows; ++i) {
    std::array<char, 256> row{};
    const int length = std::snprintf(row.data(), row.size(),
                                     "<A HREF=\"/recenteqs/Maps/%d-%d.html\">map</A> %d.%d  <A "
                                     "HREF=\"/recenteqs/Quakes/ci%08d.html\">2018/%02d/%02d "
                                     "%02d:%02d:%02d %2d.%03dN %3d.%03dW %4d.%d</A>   %s\n",
                                     114 + i % 8, 32 + i % 6, 1 + i % 5, i % 10, 14'155'392 + i, 1 + i % 12, 1 + i % 28,
                                     i % 24, i % 60, i * 7 % 60, 32 + i % 6, i * 31 % 1000, 114 + i % 8, i * 17 % 1000,
                                     i % 30, i * 3 % 10, places[static_cast<std::size_t>(i) % places.size()]);
    page.append(row.data(), static_cast<std::size_t>(length));
  }
  return page + "</PRE>\n</BODY></HTML>\n";
}

}  // namespace borvane
