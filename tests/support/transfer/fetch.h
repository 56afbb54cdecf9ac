#pragma once

#include <QtTest/QTest>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/transfer/recorded_fetcher.h"

namespace borvane {

constexpr int fetch_timeout = 60'000;  // milliseconds

/// Fetches `address` and returns the text, or "failed".
inline std::string Fetch(RecordedFetcher &http, std::string_view address) {
  const HttpFetcher::Number fetch = http.Start(address);
  EXPECT_FALSE(http.IsDone(fetch)) << "a transfer must not end before events run";
  EXPECT_TRUE(QTest::qWaitFor([&] { return http.IsDone(fetch); }, fetch_timeout));
  const FetchResult &result = http.result(fetch);
  EXPECT_TRUE(!result.failed || result.body.empty());
  return result.failed ? "failed" : result.body;
}

inline std::string Fetch(std::string_view address) {
  RecordedFetcher http;
  return Fetch(http, address);
}

}  // namespace borvane
