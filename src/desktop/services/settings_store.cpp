#include "desktop/services/settings_store.h"

#include <QtGlobal>

// On Windows the registry itself is the store.
#ifndef Q_OS_WIN

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QThread>
#include <cerrno>

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

/// How long one Borvane waits for another that is writing, in milliseconds.
constexpr int longest_turn = 1000;

/// The turn to write among all Borvanes of a user. The system takes the lock back when its holder ends, however it
/// ends, so that a lock file bars nobody's way, whatever it holds. It stays where it is: to remove it would take the
/// turn of one who waits at the old file beside one who makes a new one.
class Turn {
 public:
  /// Waits for it, for so many milliseconds at most. Where no lock can be had, nobody waits.
  Turn(const QString &lock_file, int patience)
      : descriptor_(::open(QFile::encodeName(lock_file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    constexpr int pause = 2;
    const QDeadlineTimer deadline(patience);
    while (descriptor_ >= 0 && !is_anothers_ && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
      is_anothers_ = deadline.hasExpired();
      QThread::msleep(pause);
    }
  }
  ~Turn() {
    if (descriptor_ >= 0)
      ::close(descriptor_);
  }
  Turn(const Turn &) = delete;
  Turn &operator=(const Turn &) = delete;

  /// Whether another one still had it when the time was over.
  bool IsAnothers() const { return is_anothers_; }

 private:
  int descriptor_;
  bool is_anothers_ = false;
};

/// The file itself, where its name is a link to it.
QString RealName(const QString &name) {
  const QFileInfo file(name);
  if (file.exists())
    return file.canonicalFilePath();
  return file.isSymLink() ? file.symLinkTarget() : name;
}

}  // namespace

QtSettingsStore::QtSettingsStore()
    : file_name_(QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Nalvorin"),
                           QStringLiteral("Borvane"))
                     .fileName()),
      patience_(longest_turn) {}

std::optional<QByteArray> QtSettingsStore::Content() {
  // What cannot be read just now can often be read the next moment. Values that seem to be missing would be made anew.
  constexpr int attempts = 3;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (std::optional<QByteArray> content = ContentOfFile(file_name_)) {
      last_content_ = *content;
      return content;
    }
  }
  return {};
}

std::optional<StoredValue> QtSettingsStore::Read(Hive /*hive*/, std::string_view key, std::string_view name) {
  const std::optional<QByteArray> section = SectionOf(key);
  if (!section)
    return {};
  return ValueIn(ReadSections(Content().value_or(last_content_)), *section, Bytes(name));
}

void QtSettingsStore::Write(Hive hive, std::string_view key, std::string_view name, std::string_view text) {
  const std::optional<QByteArray> section = SectionOf(key);
  const std::optional<StoredValue> stored = Read(hive, key, name);
  if (!section || (stored && std::holds_alternative<std::string>(*stored) && std::get<std::string>(*stored) == text))
    return;

  const QString file = RealName(file_name_);
  MakeFolder(QFileInfo(file).path());
  // Not ".lock": Qt would wait half a minute for a file of that name.
  const Turn turn(file + ".turn", patience_);
  // One that hangs in its turn holds nobody up twice.
  patience_ = turn.IsAnothers() ? 0 : longest_turn;

  // A write that would lose what cannot be read just now, or ever, is a write that fails.
  const std::optional<QByteArray> content = Content();
  if (!content || !KeepDamagedFileAside(file, *content))
    return;

  SettingsSections sections = ReadSections(*content);
  sections[*section][Bytes(name)] = RawText(ShownText(text));
  WriteFileThrough(file, WriteSections(sections), file);
}

}  // namespace borvane

#endif
