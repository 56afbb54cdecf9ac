#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <optional>

namespace borvane::mirror {

/// The real program, started on a free port of the loopback address; it ends with this object.
class MirrorProcess {
 public:
  /// Starts it with the arguments and, unless they say otherwise, "--listen 127.0.0.1:0"; `variables` ("TZ=UTC") are
  /// added to the environment.
  explicit MirrorProcess(QStringList arguments = {}, const QStringList &variables = {});
  ~MirrorProcess();

  /// The port of the first line that says that it listens; 0 when it ends, or says nothing for 10 seconds.
  quint16 Port();

  /// The exit status; nothing when it still runs after the time.
  std::optional<int> StatusWithin(int milliseconds);

  bool IsRunning() const { return process_.state() == QProcess::Running; }

  /// The memory that it takes, in bytes.
  qint64 ResidentBytes() const;

  /// All that it has printed so far.
  QByteArray Output();

  /// All that it has told on standard error so far.
  QByteArray Errors();

  /// Waits until standard error holds the text; false after the time.
  bool TellsWithin(const QByteArray &text, int milliseconds);

 private:
  QProcess process_;
  QByteArray output_;
  QByteArray errors_;
};

}  // namespace borvane::mirror
