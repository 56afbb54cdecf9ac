#include "support/mirror/mirror_process.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>

#include <signal.h>
#include <unistd.h>

namespace borvane::mirror {

namespace {

constexpr int timeout_ms = 60'000;

}  // namespace

MirrorProcess::MirrorProcess(QStringList arguments, const Surroundings &surroundings) {
  if (!arguments.contains("--listen"))
    arguments += {"--listen", "127.0.0.1:0"};
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString &variable : surroundings.variables)
    environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
  process_.setProcessEnvironment(environment);
  process_.setChildProcessModifier([files = surroundings.files, largest_file = surroundings.largest_file] {
    const rlimit limit = {.rlim_cur = files.soft, .rlim_max = files.hard};
    ::setrlimit(RLIMIT_NOFILE, &limit);
    const rlimit size_limit = {.rlim_cur = largest_file, .rlim_max = RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &size_limit);
    // Qt ignores the first signal in the test, a shell may ignore the others, and a child inherits what is ignored.
    ::signal(SIGPIPE, SIG_DFL);
    ::signal(SIGINT, SIG_DFL);
    ::signal(SIGXFSZ, SIG_DFL);
  });
  if (!surroundings.errors_to.isEmpty())
    process_.setStandardErrorFile(surroundings.errors_to, QIODevice::Append);
  if (!surroundings.input_from.isEmpty())
    process_.setStandardInputFile(surroundings.input_from);
  process_.start(BORVANE_MIRROR, arguments);
}

MirrorProcess::~MirrorProcess() {
  process_.kill();
  process_.waitForFinished();
}

quint16 MirrorProcess::Port() {
  const QDeadlineTimer deadline(timeout_ms);
  while (!output_.contains('\n')) {
    if (process_.state() == QProcess::NotRunning || deadline.hasExpired())
      return 0;
    ReadWhatIsThere(QProcess::StandardOutput, static_cast<int>(deadline.remainingTime()));
  }
  const QByteArray line = output_.first(output_.indexOf('\n'));
  return line.sliced(line.lastIndexOf(':') + 1).toUShort();
}

void MirrorProcess::Signal(int signal) const { ::kill(static_cast<pid_t>(process_.processId()), signal); }

std::optional<int> MirrorProcess::StatusWithin(int milliseconds) {
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(milliseconds))
    return std::nullopt;
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QByteArray MirrorProcess::MemoryMap() const {
  QFile file(QString("/proc/%1/maps").arg(process_.processId()));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 MirrorProcess::ResidentBytes() const {
  QFile file(QString("/proc/%1/statm").arg(process_.processId()));
  if (!file.open(QIODevice::ReadOnly))
    return 0;
  return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

qint64 MirrorProcess::PrivateBytes() const {
  QFile file(QString("/proc/%1/statm").arg(process_.processId()));
  if (!file.open(QIODevice::ReadOnly))
    return 0;
  const QList<QByteArray> pages = file.readAll().split(' ');
  return (pages.value(1).toLongLong() - pages.value(2).toLongLong()) * ::sysconf(_SC_PAGESIZE);
}

qint64 MirrorProcess::ProcessorMilliseconds() const {
  QFile file(QString("/proc/%1/stat").arg(process_.processId()));
  if (!file.open(QIODevice::ReadOnly))
    return 0;
  const QByteArray text = file.readAll();
  const QList<QByteArray> fields = text.sliced(text.lastIndexOf(')') + 2).split(' ');
  return (fields.value(11).toLongLong() + fields.value(12).toLongLong()) * 1000 / ::sysconf(_SC_CLK_TCK);
}

QByteArray MirrorProcess::Output() {
  ReadWhatIsThere(QProcess::StandardOutput);
  return output_;
}

QByteArray MirrorProcess::Errors() {
  ReadWhatIsThere(QProcess::StandardError);
  return errors_;
}

void MirrorProcess::ReadWhatIsThere(QProcess::ProcessChannel channel, int milliseconds) {
  process_.setReadChannel(channel);
  process_.waitForReadyRead(milliseconds);
  output_ += process_.readAllStandardOutput();
  errors_ += process_.readAllStandardError();
}

bool MirrorProcess::LogsWithin(const QByteArray &text, int milliseconds) {
  const QDeadlineTimer deadline(milliseconds);
  while (!errors_.contains(text) && !deadline.hasExpired())
    ReadWhatIsThere(QProcess::StandardError, static_cast<int>(deadline.remainingTime()));
  return errors_.contains(text);
}

}  // namespace borvane::mirror
