#include "desktop/services/http_transfer.h"

#include <QtTest/QTest>
#include <string>

#include <gtest/gtest.h>

#include "support/desktop/scripted_server.h"
#include "support/desktop/timeout.h"

namespace borvane {
namespace {

TEST(DesktopHttpTransfer, KeepsTheTextUntilItIsTaken) {
  ScriptedServer server(Serves("page", "404 Not Found"));
  DesktopHttpTransfer http;
  const TransferNumber transfer = http.Start(server.address());
  EXPECT_FALSE(http.IsDone(transfer));
  ASSERT_TRUE(QTest::qWaitFor([&] { return http.IsDone(transfer); }, timeout));
  const TransferResult result = http.Take(transfer);

  EXPECT_FALSE(result.failed);
  EXPECT_EQ(result.text, "page");
  EXPECT_EQ(http.Take(transfer).text, "");
}

TEST(DesktopHttpTransfer, EndsAtOnceWhenItIsCancelled) {
  ScriptedServer server(Holds());
  DesktopHttpTransfer http;
  const TransferNumber first = http.Start(server.address());
  const TransferNumber second = http.Start(server.address());
  http.Cancel(first);

  EXPECT_TRUE(http.IsDone(first));
  EXPECT_TRUE(http.Take(first).failed);
  EXPECT_FALSE(http.IsDone(second));
}

}  // namespace
}  // namespace borvane
