#include "mirror_process.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>

#include <unistd.h>

namespace borvane::mirror {

namespace {

constexpr int patience_ms = 10'000;

}  // namespace

MirrorProcess::MirrorProcess(QStringList arguments, const QStringList &variables) {
  if (!arguments.contains("--listen"))
    arguments += {"--listen", "127.0.0.1:0"};
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString &variable : variables)
    environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
  process_.setProcessEnvironment(environment);
  process_.start(BORVANE_MIRROR, arguments);
}

MirrorProcess::~MirrorProcess() {
  process_.kill();
  process_.waitForFinished();
}

quint16 MirrorProcess::Port() {
  const QDeadlineTimer deadline(patience_ms);
  while (!Output().contains('\n')) {
    if (process_.state() == QProcess::NotRunning || deadline.hasExpired())
      return 0;
    process_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
  }
  const QByteArray line = output_.first(output_.indexOf('\n'));
  return line.sliced(line.lastIndexOf(':') + 1).toUShort();
}

std::optional<int> MirrorProcess::StatusWithin(int milliseconds) {
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(milliseconds))
    return std::nullopt;
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

qint64 MirrorProcess::ResidentBytes() const {
  QFile file(QString("/proc/%1/statm").arg(process_.processId()));
  if (!file.open(QIODevice::ReadOnly))
    return 0;
  return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

QByteArray MirrorProcess::Output() {
  output_ += process_.readAllStandardOutput();
  return output_;
}

QByteArray MirrorProcess::Errors() {
  errors_ += process_.readAllStandardError();
  return errors_;
}

bool MirrorProcess::TellsWithin(const QByteArray &text, int milliseconds) {
  const QDeadlineTimer deadline(milliseconds);
  process_.setReadChannel(QProcess::StandardError);
  while (!Errors().contains(text)) {
    if (deadline.hasExpired())
      return false;
    process_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
  }
  return true;
}

}  // namespace borvane::mirror
