#include "desktop/services/settings_store.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>

#include "core/registry.h"
#include "desktop/services/settings_file.h"
#include "desktop/windows_1252.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill() is of POSIX, not of C++
#include <unistd.h>
#endif

namespace borvane {

namespace {

/// The place of a value in the store: "Hosts/Southern" for the value Southern of the program's sub-key Hosts. Nothing
/// for a key that is not the program's.
std::optional<QString> PlaceOf(std::string_view key, std::string_view name) {
  if (!key.starts_with(program_key))
    return {};
  QString group = ShownText(key.substr(program_key.size()));
  if (!group.isEmpty() && !group.startsWith('\\'))
    return {};
  group.replace('\\', '/');
  return (group + "/").mid(1) + ShownText(name);
}

#ifdef Q_OS_UNIX
bool IsRunning(qint64 process) { return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM; }

/// A new name in a folder survives a power cut when the folder itself has been written.
void WriteThrough(const QString &folder) {
  const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0)
    return;
  ::fsync(descriptor);
  ::close(descriptor);
}
#else
bool IsRunning(qint64 /*process*/) { return true; }

void WriteThrough(const QString & /*folder*/) {}
#endif

/// Whether the lock file `name` bars nobody's way for long. Whoever meets a lock whose owner cannot be made out waits
/// half a minute for it; only another Borvane that is writing just now is worth the wait. Any other lock is removed.
bool LockIsFree(const QString &name) {
  if (!QFileInfo::exists(name))
    return true;
  QLockFile lock(name);
  qint64 process = 0;
  QString host;
  QString program;
  if (lock.getLockInfo(&process, &host, &program) && host == QSysInfo::machineHostName() &&
      program == QFileInfo(QCoreApplication::applicationFilePath()).fileName() && IsRunning(process))
    return true;
  return lock.removeStaleLockFile();
}

/// Has QSettings read the file again before it writes. It knows a change of the file by its length and time, and two
/// writes within the same tick of the file system's clock may leave both as they were.
void MakeNews(const QString &name) {
  QFile file(name);
  if (file.open(QFile::ReadWrite | QFile::ExistingOnly))
    file.setFileTime(file.fileTime(QFile::FileModificationTime).addMSecs(1), QFile::FileModificationTime);
}

/// How long one Borvane waits for another that is writing, in milliseconds. One that hangs holds nobody up for longer.
constexpr int longest_turn = 1000;

}  // namespace

QtSettingsStore::QtSettingsStore()
    : settings_(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Nalvorin"), QStringLiteral("Borvane")) {
  settings_.setFallbacksEnabled(false);
}

std::optional<StoredValue> QtSettingsStore::Read(Hive /*hive*/, std::string_view key, std::string_view name) {
  const std::optional<QString> place = PlaceOf(key, name);
  if (!place)
    return {};
  Synchronize();
  const QVariant value = settings_.value(*place);
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      if (settings_.contains(*place))
        return OtherValue{};
      return {};
    case QMetaType::QString:
      return ProgramText(value.toString());
    case QMetaType::Int:
    case QMetaType::UInt:
      return static_cast<std::uint32_t>(value.toLongLong());
    default:
      return OtherValue{};
  }
}

void QtSettingsStore::Write(Hive /*hive*/, std::string_view key, std::string_view name, std::string_view text) {
  const std::optional<QString> place = PlaceOf(key, name);
  if (!place)
    return;
  Synchronize();
  const QString shown = ShownText(text);
  const QVariant stored = settings_.value(*place);
  if (stored.typeId() == QMetaType::QString && stored.toString() == shown)
    return;

  QLockFile turn(FileName() + ".turn");
  if (LockIsFree(turn.fileName()))
    turn.tryLock(longest_turn);
  MakeNews(FileName());
  KeepDamagedFileAside(FileName());
  settings_.setValue(*place, shown);
  Synchronize();
  WriteThrough(QFileInfo(FileName()).path());
}

void QtSettingsStore::Synchronize() {
  if (LockIsFree(FileName() + ".lock"))
    settings_.sync();
}

}  // namespace borvane
