#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <optional>

#include <sys/resource.h>

namespace borvane::mirror {

/// How many files a process may have open: what it starts with, and how far it may raise that.
struct OpenFiles {
  rlim_t soft = 1024;
  rlim_t hard = 4096;
};

/// So few that connections take all of them, whatever limits the program sets itself.
inline constexpr OpenFiles few_files = {.soft = 14, .hard = 14};

/// What surrounds the program.
struct Surroundings {
  QStringList variables = {};  ///< added to the environment, "TZ=UTC"
  OpenFiles files = {};
  rlim_t largest_file = RLIM_INFINITY;  ///< in bytes: no file that the program writes grows beyond it
  QString errors_to = {};               ///< a file for standard error, in place of this object
  QString input_from = {};              ///< a file for standard input
};

/// The real program, started on a free port of the loopback address; it ends with this object.
class MirrorProcess {
 public:
  /// Starts it with the arguments and, unless they say otherwise, "--listen 127.0.0.1:0".
  explicit MirrorProcess(QStringList arguments = {}, const Surroundings &surroundings = {});
  ~MirrorProcess();

  /// The port of the first line that says that it listens; 0 when it ends, or says nothing for 10 seconds.
  quint16 Port();

  /// Sends it a signal.
  void Signal(int signal) const;

  /// The exit status; nothing when it still runs after the time.
  std::optional<int> StatusWithin(int milliseconds);

  /// What lies in its memory, a line for each piece of a file.
  QByteArray MemoryMap() const;

  /// The memory that it takes, in bytes.
  qint64 ResidentBytes() const;

  /// The same without what it shares with other processes or has from files.
  qint64 PrivateBytes() const;

  /// The processor time that it has used so far.
  qint64 ProcessorMilliseconds() const;

  /// All that it has printed so far.
  QByteArray Output();

  /// All that it has logged on standard error so far.
  QByteArray Errors();

  /// Waits until standard error holds the text; false after the time.
  bool LogsWithin(const QByteArray &text, int milliseconds);

 private:
  void ReadWhatIsThere(QProcess::ProcessChannel channel, int milliseconds = 50);

  QProcess process_;
  QByteArray output_;
  QByteArray errors_;
};

}  // namespace borvane::mirror
