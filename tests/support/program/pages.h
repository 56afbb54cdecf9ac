#pragma once

#include <string>
#include <string_view>

#include "feed/service.h"

namespace borvane {

inline const std::string southern = "http://southern.localhost:17650";
inline const std::string los_angeles = southern + "/recenteqs/Maps/Los_Angeles.html";

/// What a client with the identifier from FakeRandom's first number sends to the service.
inline const std::string client = "macid=500000";
inline const std::string service = "http://maker.localhost:17650/cgi-bin/borvane/control.pl?";
inline const std::string set_online = service + "cmd=setonline&" + client + "&AppVersion=" + VersionDigits();
inline const std::string who_is_on = service + "cmd=whoson&" + client + "&AppVersion= " + VersionDigits();
inline const std::string add_run = service + "cmd=add&" + client;
inline const std::string version_file = "http://maker.localhost:17650/borvane/version.txt";

/// A row of a list of recent earthquakes.
inline std::string Row(std::string_view magnitude = "2.0", std::string_view place = "4 km ( 2 mi) W of Castaic, CA") {
  return R"(<A HREF="/recenteqs/Maps/118-34.html">map</A> )" + std::string(magnitude) +
         R"(  <A HREF="/recenteqs/Quakes/ci37868143.html">2018/02/07 01:26:13 34.495N 118.667W 26.5</A>    )" +
         std::string(place) + "\n";
}

/// A list of recent earthquakes.
inline std::string Page(std::string_view rows) { return "<PRE>\n" + std::string(rows) + "</PRE>\n"; }

}  // namespace borvane
