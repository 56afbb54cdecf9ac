#include <QTimer>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/desktop/scripted_server.h"
#include "support/transfer/fetch.h"

namespace borvane {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

/// Answers the first requests with redirects to these places and the next one with the page "there".
ScriptedServer::Answer RedirectsTo(Strings locations, const std::string &status = "302 Found") {
  return [locations = std::move(locations), status, request = std::size_t{0}](QTcpSocket &connection,
                                                                              const std::string &line) mutable {
    if (request < locations.size())
      Writes("HTTP/1.1 " + status + "\r\nLocation: " + locations[request++] +
             "\r\nContent-Length: 4\r\nConnection: close\r\n\r\nmove")(connection, line);
    else
      Serves("there")(connection, line);
  };
}

TEST(HttpFetcher, CountsRedirectsIntoTheTime) {
  ScriptedServer server([](QTcpSocket &connection, const std::string &line) {
    QTimer::singleShot(70, &connection, [&connection, line] { RedirectsTo({"/again"})(connection, line); });
  });
  RecordedFetcher http({.time = 200ms, .redirects = 1000});

  EXPECT_EQ(Fetch(http, server.address()), "failed");
  EXPECT_LE(server.request_lines().size(), 4U);
}

TEST(HttpFetcher, FollowsUpToFiveRedirects) {
  ScriptedServer five(RedirectsTo({"/1", "/2", "/3", "/4", "/5"}));
  EXPECT_EQ(Fetch(five.address("/0")), "there");
  EXPECT_EQ(five.request_lines().back(), "GET /5 HTTP/1.1");

  ScriptedServer six(RedirectsTo({"/1", "/2", "/3", "/4", "/5", "/6"}));
  EXPECT_EQ(Fetch(six.address("/0")), "failed");
  EXPECT_EQ(six.request_lines().size(), 6U);
}

TEST(HttpFetcher, FollowsEveryKindOfRedirect) {
  for (const char *status : {"301 M", "302 F", "303 S", "307 T", "308 P"}) {
    ScriptedServer server(RedirectsTo({"/next"}, status));
    EXPECT_EQ(Fetch(server.address()), "there") << status;
  }
}

TEST(HttpFetcher, ResolvesARedirectAgainstWhatWasAskedFor) {
  ScriptedServer server(RedirectsTo({"other.html"}));
  EXPECT_EQ(Fetch(server.address("/recenteqs/Maps/a b.html?q=/x")), "there");

  EXPECT_EQ(server.request_lines().back(), "GET /recenteqs/Maps/other.html HTTP/1.1");
}

TEST(HttpFetcher, FollowsARedirectToAnotherHost) {
  ScriptedServer other(Serves("other"));
  ScriptedServer server(RedirectsTo({other.address("/x")}));

  EXPECT_EQ(Fetch(server.address()), "other");
}

TEST(HttpFetcher, FollowsARedirectToNothingButHttp) {
  for (const char *location : {"file:///etc/passwd", "ftp://127.0.0.1/", "gopher://127.0.0.1/", "http://"}) {
    ScriptedServer server(RedirectsTo({location}));
    EXPECT_EQ(Fetch(server.address()), "failed") << location;
  }
}

}  // namespace
}  // namespace borvane
