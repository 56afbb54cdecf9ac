#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace borvane::mirror {

/// How much a line of the log matters; the numbers are those of syslog.
enum class LogLevel {
  Error = 3,    ///< the mirror cannot do what it was started for
  Warning = 4,  ///< something fails that may work again
  Info = 6,     ///< what an operator wants to know
};

/// The level of that name, "error", "warning" or "info"; nothing for any other name.
std::optional<LogLevel> LogLevelOf(const QString &name);

/// Takes a line for the log.
using WriteLog = std::function<void(LogLevel level, const QString &text)>;

/// A line of the log with its end. What could break it in two, or change a terminal, is a "?". For the journal of
/// systemd it begins with the level, "<3>".
QByteArray LogLine(LogLevel level, const QString &text, bool is_for_journal);

/// The program's log on standard error.
class Log {
 public:
  using Write = std::function<void(const QString &text)>;

  Log();

  /// Less important lines than `least` are dropped from now on.
  void SetLeast(LogLevel least) { least_ = least; }

  void operator()(LogLevel level, const QString &text) const;

  /// What writes lines of that level to this log, which has to outlive it.
  Write At(LogLevel level) const;

 private:
  LogLevel least_ = LogLevel::Info;
  bool is_for_journal_;
};

}  // namespace borvane::mirror
