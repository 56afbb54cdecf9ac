#include "log/log.h"

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace borvane::mirror {

namespace {

/// Whether standard error is the stream to the journal that JOURNAL_STREAM names by its device and inode. The variable
/// alone says nothing: every program inherits it that a service starts.
bool IsJournal() {
#ifdef Q_OS_UNIX
  struct stat status = {};
  if (::fstat(STDERR_FILENO, &status) != 0)
    return false;
  return qgetenv("JOURNAL_STREAM") ==
         QByteArray::number(qulonglong{status.st_dev}) + ':' + QByteArray::number(qulonglong{status.st_ino});
#else
  return false;
#endif
}

bool IsControl(QChar character) { return character.category() == QChar::Other_Control; }

}  // namespace

std::optional<LogLevel> LogLevelOf(const QString &name) {
  if (name == "error")
    return LogLevel::Error;
  if (name == "warning")
    return LogLevel::Warning;
  if (name == "info")
    return LogLevel::Info;
  return std::nullopt;
}

QByteArray LogLine(LogLevel level, const QString &text, bool is_for_journal) {
  QString line = text;
  for (QChar &character : line)
    if (IsControl(character))
      character = '?';
  const QByteArray prefix = is_for_journal ? '<' + QByteArray::number(static_cast<int>(level)) + '>' : QByteArray();
  return prefix + "borvane-mirror: " + line.toLocal8Bit() + '\n';
}

Log::Log() : is_for_journal_(IsJournal()) {}

void Log::operator()(LogLevel level, const QString &text) const {
  if (level > least_)
    return;
  const QByteArray line = LogLine(level, text, is_for_journal_);
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

Log::Write Log::At(LogLevel level) const {
  return [this, level](const QString &text) { (*this)(level, text); };
}

}  // namespace borvane::mirror
