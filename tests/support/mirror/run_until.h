#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace borvane::mirror {

/// Lets events run until `done`, for a minute at most; returns whether it is done.
inline bool RunUntil(const std::function<bool()> &done) {
  const QDeadlineTimer deadline(60'000);
  QEventLoop loop;
  QTimer look;
  look.callOnTimeout([&] {
    if (done() || deadline.hasExpired())
      loop.quit();
  });
  look.start(2);
  loop.exec();
  return done();
}

/// Lets events run for that long.
inline void RunFor(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace borvane::mirror
