#include <QtTest/QTest>
#include <string>

#include <gtest/gtest.h>

#include "support/desktop/scripted_server.h"
#include "support/transfer/fetch.h"

namespace borvane {
namespace {

TEST(HttpFetcher, EndsAtOnceWhenItIsCancelled) {
  ScriptedServer server(Holds());
  RecordedFetcher http;
  const HttpFetcher::Number fetch = http.Start(server.address());
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.request_lines().size() == 1; }, fetch_timeout));
  http.Cancel(fetch);

  EXPECT_TRUE(http.IsDone(fetch));
  EXPECT_TRUE(http.result(fetch).failed);
}

TEST(HttpFetcher, EndsAtOnceWhenItIsCancelledBeforeEventsRun) {
  ScriptedServer server(Holds());
  RecordedFetcher http;
  for (const std::string &address :
       {server.address(), std::string("no address"), std::string("http://255.255.255.255/")}) {
    const HttpFetcher::Number fetch = http.Start(address);
    http.Cancel(fetch);
    EXPECT_TRUE(http.IsDone(fetch));
    EXPECT_TRUE(http.result(fetch).failed);
  }
  QTest::qWait(20);
}

TEST(HttpFetcher, CancellingWhatIsDoneChangesNothing) {
  ScriptedServer server(Serves("page"));
  RecordedFetcher http;
  const HttpFetcher::Number fetch = http.Start(server.address());
  ASSERT_TRUE(QTest::qWaitFor([&] { return http.IsDone(fetch); }, fetch_timeout));
  http.Cancel(fetch);

  EXPECT_EQ(http.result(fetch).body, "page");
}

TEST(HttpFetcher, ReportsEachEndOnce) {
  ScriptedServer server(Serves("page"));
  RecordedFetcher http;
  const HttpFetcher::Number cancelled = http.Start(server.address());
  http.Cancel(cancelled);
  http.Cancel(cancelled);
  Fetch(http, server.address());
  Fetch(http, "no address");

  EXPECT_EQ(http.ends(), 3);
}

TEST(HttpFetcher, MayBeginAFetchAtTheEndOfAnother) {
  ScriptedServer server(Serves("page"));
  HttpFetcher fetcher;
  std::string second;
  fetcher.Start(server.address(), [&](HttpFetcher::Number /*first*/, const FetchResult & /*result*/) {
    fetcher.Start(server.address(),
                  [&](HttpFetcher::Number /*fetch*/, const FetchResult &result) { second = result.body; });
  });

  EXPECT_TRUE(QTest::qWaitFor([&] { return second == "page"; }, fetch_timeout));
}

TEST(HttpFetcher, CarriesTwoAtOnce) {
  ScriptedServer slow(Holds());
  ScriptedServer quick(Serves("quick"));
  RecordedFetcher http;
  const HttpFetcher::Number first = http.Start(slow.address());

  EXPECT_EQ(Fetch(http, quick.address()), "quick");
  EXPECT_FALSE(http.IsDone(first));
}

TEST(HttpFetcher, CountsItsTransfersFromOneOn) {
  ScriptedServer server(Serves("x"));
  RecordedFetcher http;

  EXPECT_EQ(http.Start(server.address()), 1U);
  EXPECT_EQ(http.Start(server.address()), 2U);
}

TEST(HttpFetcher, MayGoWhileTransfersAreUnderWay) {
  ScriptedServer server(Holds());
  {
    RecordedFetcher http;
    http.Start(server.address());
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.request_lines().size() == 1; }, fetch_timeout));
    http.Start(server.address());
  }
  QTest::qWait(20);
  EXPECT_EQ(server.request_lines().size(), 1U);
}

}  // namespace
}  // namespace borvane
