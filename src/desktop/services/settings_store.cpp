#include "desktop/services/settings_store.h"

#include <QtGlobal>

// On Windows the registry itself is the store.
#ifndef Q_OS_WIN

#include <QCoreApplication>
#include <QFileInfo>
#include <QLockFile>
#include <QSettings>
#include <QSysInfo>

#include "core/registry.h"
#include "desktop/services/folder.h"
#include "desktop/services/settings_file.h"
#include "desktop/windows_1252.h"

#ifdef Q_OS_UNIX
#include <signal.h>  // NOLINT(modernize-deprecated-headers): kill() is of POSIX, not of C++
#endif

namespace borvane {

namespace {

QByteArray Bytes(std::string_view text) { return {text.data(), static_cast<qsizetype>(text.size())}; }

/// The section for a key: "General" for the program's own, "Hosts" for its sub-key Hosts. Nothing for a key that is not
/// the program's.
std::optional<QByteArray> SectionOf(std::string_view key) {
  if (key == program_key)
    return "General";
  if (!key.starts_with(program_key) || key[program_key.size()] != '\\')
    return {};
  return Bytes(key.substr(program_key.size() + 1));
}

/// The value in `sections`; nothing when it is missing.
std::optional<StoredValue> ValueIn(const SettingsSections &sections, const QByteArray &section,
                                   const QByteArray &name) {
  const auto values = sections.find(section);
  if (values == sections.end())
    return {};
  const auto value = values->second.find(name);
  if (value == values->second.end())
    return {};
  return ValueOf(value->second);
}

#ifdef Q_OS_UNIX
bool IsRunning(qint64 process) { return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM; }
#else
bool IsRunning(qint64 /*process*/) { return true; }
#endif

/// How long one Borvane waits for another that is writing, in milliseconds. One that hangs holds nobody up for longer.
constexpr int longest_turn = 1000;

/// Takes the turn to write. Whoever meets a lock whose owner cannot be made out waits for it in vain; only another
/// Borvane that is writing just now is worth the wait. Any other lock is removed, also one that this program could not
/// take away when it had written.
void TakeTurn(QLockFile &lock) {
  qint64 process = 0;
  QString host;
  QString program;
  const bool is_anothers = lock.getLockInfo(&process, &host, &program) && host == QSysInfo::machineHostName() &&
                           program == QFileInfo(QCoreApplication::applicationFilePath()).fileName() &&
                           process != QCoreApplication::applicationPid() && IsRunning(process);
  if (QFileInfo::exists(lock.fileName()) && !is_anothers && !lock.removeStaleLockFile())
    return;
  lock.tryLock(longest_turn);
}

}  // namespace

QtSettingsStore::QtSettingsStore()
    : file_name_(QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Nalvorin"),
                           QStringLiteral("Borvane"))
                     .fileName()) {}

std::optional<StoredValue> QtSettingsStore::Read(Hive /*hive*/, std::string_view key, std::string_view name) {
  const std::optional<QByteArray> section = SectionOf(key);
  if (!section)
    return {};
  return ValueIn(ReadSections(ContentOfFile(file_name_).value_or(QByteArray())), *section, Bytes(name));
}

void QtSettingsStore::Write(Hive hive, std::string_view key, std::string_view name, std::string_view text) {
  const std::optional<QByteArray> section = SectionOf(key);
  const std::optional<StoredValue> stored = Read(hive, key, name);
  if (!section || (stored && std::holds_alternative<std::string>(*stored) && std::get<std::string>(*stored) == text))
    return;

  MakeFolder(QFileInfo(file_name_).path());
  QLockFile turn(file_name_ + ".lock");
  TakeTurn(turn);

  // A write that would lose what cannot be read just now, or ever, is a write that fails.
  const std::optional<QByteArray> content = ContentOfFile(file_name_);
  if (!content || !KeepDamagedFileAside(file_name_, *content))
    return;

  SettingsSections sections = ReadSections(*content);
  sections[*section][Bytes(name)] = RawText(ShownText(text));
  WriteFileThrough(file_name_, WriteSections(sections), file_name_);
}

}  // namespace borvane

#endif
