#include <QCoreApplication>
#include <algorithm>
#include <csignal>
#include <cstdio>

#include "mirror.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

/// Asks the system for what a server needs of it.
void PrepareProcess() {
#ifdef Q_OS_UNIX
  // The monitor that started the mirror may go before another one that shares it, and with it the reader of what is
  // printed.
  std::signal(SIGPIPE, SIG_IGN);

  // Each connection is an open file, and a process may open about a thousand unless it asks for more.
  rlimit files = {};
  if (::getrlimit(RLIMIT_NOFILE, &files) == 0) {
    files.rlim_cur = std::min<rlim_t>(files.rlim_max, 4096);
    ::setrlimit(RLIMIT_NOFILE, &files);
  }
#endif
}

}  // namespace

int main(int argc, char *argv[]) {
  PrepareProcess();
  const QCoreApplication application(argc, argv);
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
  Mirror mirror(line.options);
  if (const std::optional<int> status = mirror.Start())
    return *status;
  return QCoreApplication::exec();
}
