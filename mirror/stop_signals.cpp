#include "stop_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <utility>

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

void OnSignal(int signal) {
  const int error = errno;
  const char byte = static_cast<char>(signal);
  [[maybe_unused]] const ssize_t written = ::write(writing_end, &byte, 1);
  errno = error;
}

/// How many of the standard input, output and error are a terminal that is there.
int CountTerminals() {
  return (::isatty(STDIN_FILENO) != 0 ? 1 : 0) + (::isatty(STDOUT_FILENO) != 0 ? 1 : 0) +
         (::isatty(STDERR_FILENO) != 0 ? 1 : 0);
}

/// A shell has signals ignored for what it starts in the background, and so does nohup.
void CatchUnlessIgnored(int signal) {
  if (std::signal(signal, OnSignal) == SIG_IGN)
    std::signal(signal, SIG_IGN);
}

}  // namespace

StopSignals::StopSignals(std::function<void()> reread) {
  int ends[2] = {};
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
    return;
  reading_end = ends[0];
  writing_end = ends[1];
  const int terminals = CountTerminals();
  auto *notifier = new QSocketNotifier(reading_end, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier, reread = std::move(reread), terminals] {
    char signal = 0;
    while (::read(reading_end, &signal, 1) == 1) {
      const bool has_lost_terminal = CountTerminals() < terminals;
      if (signal == SIGHUP && !has_lost_terminal) {
        reread();
        continue;
      }
      has_stopped_ = true;
      notifier->setEnabled(false);
      QCoreApplication::quit();
    }
  });
  std::signal(SIGTERM, OnSignal);
  CatchUnlessIgnored(SIGINT);
  CatchUnlessIgnored(SIGHUP);
}

StopSignals::~StopSignals() {
  if (writing_end < 0)
    return;
  std::signal(SIGTERM, SIG_DFL);
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGHUP, SIG_DFL);
  ::close(reading_end);
  ::close(writing_end);
  reading_end = writing_end = -1;
}

#else

StopSignals::StopSignals(std::function<void()> /*reread*/) {}
StopSignals::~StopSignals() = default;

#endif

}  // namespace borvane::mirror
