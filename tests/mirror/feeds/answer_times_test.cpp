#include "feeds/answer_times.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

constexpr qint64 now = 1'781'838'245'000;  // Fri, 19 Jun 2026 03:04:05 GMT

/// The lifetime in seconds; -1 for none.
qint64 Lifetime(const TimeHeaders &headers) {
  return ReadTimeHeaders(headers, now).lifetime.value_or(std::chrono::seconds(-1)).count();
}

/// The time in seconds for which the server wants to be left alone; -1 for none.
qint64 RetryAfter(const QByteArray &value, const QByteArray &date = {}) {
  return ReadTimeHeaders({.date = date, .retry_after = value}, now)
      .retry_after.value_or(std::chrono::seconds(-1))
      .count();
}

TEST(ReadTimeHeaders, SaysNothingWithoutHeaders) {
  EXPECT_EQ(Lifetime({}), -1);
  EXPECT_EQ(RetryAfter(""), -1);
}

TEST(ReadTimeHeaders, TakesTheLifetimeOfCacheControl) {
  EXPECT_EQ(Lifetime({.cache_control = "max-age=60"}), 60);
  EXPECT_EQ(Lifetime({.cache_control = "public, Max-Age=90 , must-revalidate"}), 90);
  EXPECT_EQ(Lifetime({.cache_control = "max-age=0"}), 0);
  EXPECT_EQ(Lifetime({.cache_control = "max-age=60, no-cache"}), 0);
  EXPECT_EQ(Lifetime({.cache_control = "no-store"}), 0);
  for (const char *nothing : {"public", "max-age", "max-age=", "max-age=x", "max-age=-5", "max-age=5 0", "s-maxage=60"})
    EXPECT_EQ(Lifetime({.cache_control = nothing}), -1) << nothing;
}

TEST(ReadTimeHeaders, TakesTheAgeOffTheLifetime) {
  EXPECT_EQ(Lifetime({.age = "45", .cache_control = "max-age=60"}), 15);
  EXPECT_EQ(Lifetime({.age = "61", .cache_control = "max-age=60"}), 0);
  EXPECT_EQ(Lifetime({.age = "x", .cache_control = "max-age=60"}), 60);
  EXPECT_EQ(Lifetime({.age = "45"}), -1);
}

TEST(ReadTimeHeaders, CountsExpiresFromTheServersClock) {
  EXPECT_EQ(Lifetime({.date = "Thu, 01 Jan 2026 23:59:30 GMT", .expires = "Fri, 02 Jan 2026 00:00:00 GMT"}), 30);
  EXPECT_EQ(Lifetime({.date = "Fri, 02 Jan 2026 00:00:30 GMT", .expires = "Fri, 02 Jan 2026 00:00:00 GMT"}), 0);
  EXPECT_EQ(Lifetime({.expires = "Fri, 19 Jun 2026 03:05:05 GMT"}), 60) << "without one from the computer's";
  for (const char *over : {"0", "-1", "Fri, 19 Jun 2026 03:05:05 CET", "Fri, 32 Jun 2026 03:05:05 GMT"})
    EXPECT_EQ(Lifetime({.expires = over}), 0) << over;
}

TEST(ReadTimeHeaders, BelievesCacheControlBeforeExpires) {
  EXPECT_EQ(Lifetime({.cache_control = "max-age=5", .expires = "Fri, 19 Jun 2026 03:05:05 GMT"}), 5);
  EXPECT_EQ(Lifetime({.cache_control = "public", .expires = "Fri, 19 Jun 2026 03:05:05 GMT"}), 60);
}

TEST(ReadTimeHeaders, TakesATimeOrAMomentOfRetryAfter) {
  EXPECT_EQ(RetryAfter("120"), 120);
  EXPECT_EQ(RetryAfter("Fri, 19 Jun 2026 03:14:05 GMT"), 600);
  EXPECT_EQ(RetryAfter("Fri, 02 Jan 2026 00:01:00 GMT", "Fri, 02 Jan 2026 00:00:00 GMT"), 60);
  EXPECT_EQ(RetryAfter("Fri, 19 Jun 2026 03:00:00 GMT"), 0);
  for (const char *nothing : {"soon", "-5", "1.5", "+7", "Fri, 19 Jun 2026 25:00:00 GMT"})
    EXPECT_EQ(RetryAfter(nothing), -1) << nothing;
}

TEST(ReadTimeHeaders, TakesTheMomentAtWhichTheAnswerWasMade) {
  EXPECT_EQ(ReadTimeHeaders({.date = "Fri, 19 Jun 2026 03:04:05 GMT", .age = "60"}, now + 60'000).made, now);
  for (const char *nothing : {"", "now", "Fri, 19 Jun 2026 03:04:05 CET"})
    EXPECT_EQ(ReadTimeHeaders({.date = nothing}, now).made, 0) << nothing;
}

TEST(ReadTimeHeaders, BelievesNoTimeLongerThanADay) {
  EXPECT_EQ(Lifetime({.cache_control = "max-age=31536000"}), 86'400);
  EXPECT_EQ(Lifetime({.cache_control = "max-age=99999999999999999999"}), 86'400);
  EXPECT_EQ(Lifetime({.expires = "Sat, 19 Jun 2027 03:05:05 GMT"}), 86'400);
  EXPECT_EQ(RetryAfter("99999999999999999999"), 86'400);
  EXPECT_EQ(RetryAfter("Sat, 19 Jun 2027 03:05:05 GMT"), 86'400);
}

}  // namespace
}  // namespace borvane::mirror
