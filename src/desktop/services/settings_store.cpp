#include "desktop/services/settings_store.h"

#include <QtGlobal>

// On Windows the registry itself is the store.
#ifndef Q_OS_WIN

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/registry.h"
#include "desktop/services/folder.h"
#include "desktop/services/settings_file.h"
#include "desktop/windows_1252.h"

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

/// The turn to write among all Borvanes of a user. The system takes the lock back when its holder ends, however it
/// ends, so that a lock file bars nobody's way, whatever it holds. It stays where it is: to remove it would take the
/// turn of one who waits at the old file beside one who makes a new one.
class Turn {
 public:
  /// Waits for it, but not for one that hangs.
  explicit Turn(const QString &lock_file)
      : descriptor_(::open(QFile::encodeName(lock_file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    constexpr int longest_wait = 1000;  // milliseconds
    constexpr int pause = 2;
    for (const QDeadlineTimer deadline(longest_wait);
         descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && !deadline.hasExpired();)
      QThread::msleep(pause);
  }
  ~Turn() {
    if (descriptor_ >= 0)
      ::close(descriptor_);
  }
  Turn(const Turn &) = delete;
  Turn &operator=(const Turn &) = delete;

 private:
  int descriptor_;
};

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
  // Not ".lock": Qt would wait half a minute for a file of that name.
  const Turn turn(file_name_ + ".turn");

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
