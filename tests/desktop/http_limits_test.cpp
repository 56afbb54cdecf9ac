#include <QTcpServer>
#include <QtTest/QTest>
#include <chrono>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "desktop/services/http_transfer.h"

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

constexpr int patience = 10'000;  // milliseconds

/// A server that takes every connection and says nothing.
class SilentServer {
 public:
  SilentServer() { EXPECT_TRUE(server_.listen(QHostAddress::LocalHost)); }
  std::string address() const { return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + "/"; }

 private:
  QTcpServer server_;
};

/// Expects the transfer to fail, but not before events run.
void ExpectFailure(CurlTransfer &http, const SilentServer &server) {
  const TransferNumber transfer = http.Start(server.address());
  EXPECT_FALSE(http.IsDone(transfer));
  ASSERT_TRUE(QTest::qWaitFor([&] { return http.IsDone(transfer); }, patience));
  EXPECT_TRUE(http.Take(transfer).failed);
}

TEST(CurlTransferLimits, NoTimeLeftIsNotTakenForNoLimit) {
  const SilentServer server;
  CurlTransfer http({.time = 0ms});
  ExpectFailure(http, server);
}

TEST(CurlTransferLimits, TransferWithoutAHandleFails) {
  const SilentServer server;
  CurlTransfer http({}, CurlWithoutHandles);
  ExpectFailure(http, server);
}

TEST(CurlTransferLimits, TransferThatTheLibraryCannotTakeFails) {
  const SilentServer server;
  CurlTransfer http({}, CurlWithoutRoom);
  ExpectFailure(http, server);
}

TEST(CurlTransferLimits, FailedTransferCanBeCancelledBeforeItEnds) {
  const SilentServer server;
  CurlTransfer http({}, CurlWithoutRoom);
  const TransferNumber transfer = http.Start(server.address());
  http.Cancel(transfer);
  EXPECT_TRUE(http.IsDone(transfer));
  QTest::qWait(10);
  EXPECT_TRUE(http.Take(transfer).failed);
}

}  // namespace
}  // namespace borvane
