#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "mirror.h"
#include "stop_signals.h"

int main(int argc, char *argv[]) {
#ifdef SIGPIPE
  // The monitor that started the mirror may go before another one that shares it, and with it the reader of what is
  // printed.
  std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
  // A write beyond the user's limit for the size of a file fails like one to a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
#endif
  const QCoreApplication application(argc, argv);
  QCoreApplication::setOrganizationName("Nalvorin");
  QCoreApplication::setApplicationName("borvane-mirror");
  using namespace borvane::mirror;
  const CommandLine line = ReadCommandLine(QCoreApplication::arguments().sliced(1));
  if (!line.fault.isEmpty()) {
    std::fprintf(stderr, "borvane-mirror: %s\n%s", qPrintable(line.fault), Usage());
    return 2;
  }
  if (line.options.help) {
    std::fputs(Usage(), stdout);
    return 0;
  }
  if (line.options.version) {
    std::puts("borvane-mirror " BORVANE_VERSION);
    return 0;
  }
  int status = 0;
  {
    const StopSignals stop_signals;
    Mirror mirror(line.options);
    const std::optional<int> end = mirror.Start();
    status = end ? *end : QCoreApplication::exec();
  }
  // A store that hangs leaves its thread running. It may wake at any moment, and must not find Qt half taken down.
  std::fflush(nullptr);
  std::_Exit(status);
}
