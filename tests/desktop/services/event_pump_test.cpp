#include "desktop/services/event_pump.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(QtEventPump, LetsEventsRunForATimeAndNoShorter) {
  QElapsedTimer clock;
  clock.start();
  QtEventPump().LetEventsRunFor(120);
  EXPECT_GE(clock.nsecsElapsed(), 120'000'000);
}

TEST(QtEventPump, LetsEveryEventRunThatComesWithinTheTime) {
  QObject receiver;
  int events = 0;
  QTimer::singleShot(0, &receiver, [&] {
    ++events;
    QTimer::singleShot(1, &receiver, [&] {
      ++events;
      QMetaObject::invokeMethod(
          &receiver, [&] { ++events; }, Qt::QueuedConnection);
    });
  });
  // Long enough for a busy machine: a time in between is not waited for.
  QtEventPump().LetEventsRunFor(1'000);
  EXPECT_EQ(events, 3);
}

TEST(QtEventPump, LeavesAnEventAfterTheTimeForLater) {
  QObject receiver;
  bool has_come = false;
  QTimer::singleShot(60'000, &receiver, [&] { has_come = true; });
  QtEventPump().LetEventsRunFor(1);
  EXPECT_FALSE(has_come);
}

TEST(QtEventPump, ReturnsWhenAnEventInsideLetsEventsRunToo) {
  QObject receiver;
  bool was_inside = false;
  QTimer::singleShot(0, &receiver, [&] {
    QtEventPump().LetEventsRunFor(20);
    was_inside = true;
  });
  QtEventPump().LetEventsRunFor(1'000);
  EXPECT_TRUE(was_inside);
}

TEST(QtEventPump, LetsWhatIsPendingRunAndReturnsAtOnce) {
  QObject receiver;
  bool has_run = false;
  bool has_come_later = false;
  QMetaObject::invokeMethod(
      &receiver, [&] { has_run = true; }, Qt::QueuedConnection);
  QTimer::singleShot(60'000, &receiver, [&] { has_come_later = true; });
  QtEventPump().LetEventsRun();
  EXPECT_TRUE(has_run);
  EXPECT_FALSE(has_come_later);
}

TEST(QtEventPump, SleepsUntilThereIsAnEvent) {
  QObject receiver;
  bool has_come = false;
  QTimer::singleShot(20, &receiver, [&] { has_come = true; });
  // What else wakes it is none of the test's.
  for (int waits = 0; waits < 1'000 && !has_come; ++waits)
    QtEventPump().WaitForEvents();
  EXPECT_TRUE(has_come);
}

}  // namespace
}  // namespace borvane
