#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "command_line.h"
#include "configuration.h"
#include "mirror.h"
#include "stop_signals.h"

int main(int argc, char *argv[]) {
#ifdef SIGPIPE
  // The monitor that started the mirror may end while another one still uses it; nobody reads the standard output then.
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
  // A signal that comes while the options are read waits for the event loop.
  Mirror *running = nullptr;
  const StopSignals stop_signals([&running] {
    if (running)
      running->Reread();
  });
  const QStringList arguments = QCoreApplication::arguments().sliced(1);
  const Setup setup = ReadSetup(arguments);
  if (!setup.usage.isEmpty()) {
    std::fprintf(stderr, "borvane-mirror: %s\n%s", qPrintable(setup.usage), Usage());
    return 2;
  }
  if (setup.options.help) {
    std::fputs(Usage(), stdout);
    return 0;
  }
  if (setup.options.version) {
    std::puts("borvane-mirror " BORVANE_VERSION);
    return 0;
  }
  if (!setup.faults.isEmpty()) {
    const Log log;
    for (const QString &fault : setup.faults)
      log(LogLevel::Error, fault);
    return 2;
  }
  if (setup.options.checks_only) {
    std::puts(setup.file.isEmpty() ? "no configuration file was found" : qPrintable(setup.file + " is in order"));
    return 0;
  }
  int status = 0;
  {
    Mirror mirror(setup.options, arguments);
    running = &mirror;
    const std::optional<int> end = mirror.Start();
    if (end)
      status = *end;
    else if (!stop_signals.HasStopped())
      status = QCoreApplication::exec();
    running = nullptr;
  }
  // A store that hangs leaves its thread running. It may wake at any moment, and must not find Qt half taken down.
  std::fflush(nullptr);
  std::_Exit(status);
}
