#include <QTcpServer>
#include <QtTest/QTest>
#include <chrono>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/transfer/recorded_fetcher.h"

namespace borvane {
namespace {

using namespace std::chrono_literals;

/// The library where memory is too short for a handle.
std::optional<CurlLibrary> CurlWithoutHandles() {
  std::optional<CurlLibrary> curl = CurlLibrary::Load();
  curl->easy_init = []() -> CURL * { return nullptr; };
  return curl;
}

/// The library where memory is too short for a transfer more.
std::optional<CurlLibrary> CurlWithoutRoom() {
  std::optional<CurlLibrary> curl = CurlLibrary::Load();
  curl->multi_add_handle = [](CURLM *, CURL *) { return CURLM_OUT_OF_MEMORY; };
  return curl;
}

/// A server that takes every connection and never answers.
class SilentServer {
 public:
  SilentServer() { EXPECT_TRUE(server_.listen(QHostAddress::LocalHost)); }
  std::string address() const { return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + "/"; }

 private:
  QTcpServer server_;
};

/// Expects the transfer to fail, but not before events run.
void ExpectFailure(RecordedFetcher &http, const SilentServer &server) {
  const HttpFetcher::Number fetch = http.Start(server.address());
  EXPECT_FALSE(http.IsDone(fetch));
  ASSERT_TRUE(QTest::qWaitFor([&] { return http.IsDone(fetch); }, fetch_timeout));
  EXPECT_TRUE(http.result(fetch).failed);
}

TEST(HttpFetcherLimits, NoTimeLeftIsNotTakenForNoLimit) {
  const SilentServer server;
  RecordedFetcher http({.time = 0ms});
  ExpectFailure(http, server);
}

TEST(HttpFetcherLimits, TransferWithoutAHandleFails) {
  const SilentServer server;
  RecordedFetcher http({}, CurlWithoutHandles);
  ExpectFailure(http, server);
}

TEST(HttpFetcherLimits, TransferThatTheLibraryCannotTakeFails) {
  const SilentServer server;
  RecordedFetcher http({}, CurlWithoutRoom);
  ExpectFailure(http, server);
}

TEST(HttpFetcherLimits, FailedTransferCanBeCancelledBeforeItEnds) {
  const SilentServer server;
  RecordedFetcher http({}, CurlWithoutRoom);
  const HttpFetcher::Number fetch = http.Start(server.address());
  http.Cancel(fetch);
  EXPECT_TRUE(http.IsDone(fetch));
  QTest::qWait(10);
  EXPECT_TRUE(http.result(fetch).failed);
}

}  // namespace
}  // namespace borvane
