#include "stop_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace borvane::mirror {

#ifdef Q_OS_UNIX

namespace {

// A pipe from the signal handler, which may do little more than write, to the event loop.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a signal handler can reach nothing else
int reading_end = -1;
int writing_end = -1;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void OnSignal(int) {
  const int error = errno;
  [[maybe_unused]] const ssize_t written = ::write(writing_end, "", 1);
  errno = error;
}

}  // namespace

StopSignals::StopSignals() {
  int ends[2] = {};
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
    return;
  reading_end = ends[0];
  writing_end = ends[1];
  auto *notifier = new QSocketNotifier(reading_end, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [notifier] {
    notifier->setEnabled(false);
    QCoreApplication::quit();
  });
  std::signal(SIGTERM, OnSignal);
  // A shell ignores it for what it starts in the background.
  if (std::signal(SIGINT, OnSignal) == SIG_IGN)
    std::signal(SIGINT, SIG_IGN);
}

StopSignals::~StopSignals() {
  if (writing_end < 0)
    return;
  std::signal(SIGTERM, SIG_DFL);
  std::signal(SIGINT, SIG_DFL);
  ::close(reading_end);
  ::close(writing_end);
  reading_end = writing_end = -1;
}

#else

StopSignals::StopSignals() = default;
StopSignals::~StopSignals() = default;

#endif

}  // namespace borvane::mirror
