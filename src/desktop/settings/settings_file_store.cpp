#include "desktop/settings/settings_file_store.h"

#include <QtGlobal>

// On Windows the registry is the store.
#ifndef Q_OS_WIN

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <utility>

#include "core/registry.h"
#include "desktop/settings/durable_file.h"
#include "desktop/settings/settings_file.h"
#include "desktop/settings/write_lock.h"
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

/// The file itself, where its name is a link to it.
QString RealName(const QString &name) {
  const QFileInfo file(name);
  if (file.exists())
    return file.canonicalFilePath();
  return file.isSymLink() ? file.symLinkTarget() : name;
}

/// Not ".lock": QSettings locks a file by creating one of that name, so it would wait 30 s for the one that lies there,
/// and would then delete it as left over.
QString LockFile(const QString &file) { return file + QStringLiteral(".writing"); }

/// Copies a damaged file to a new name beside it, such as "Borvane.conf.damaged-1", unless there is such a copy
/// already. Returns false when the copy cannot be written.
bool CopyDamagedFile(const QString &file, const QByteArray &content) {
  for (int number = 1;; ++number) {
    const QString copy = file + QStringLiteral(".damaged-%1").arg(number);
    if (!QFile::exists(copy))
      return WriteFileDurably(copy, content, file);
    if (ContentOfFile(copy) == content)
      return true;
  }
}

}  // namespace

QString UserSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/Nalvorin/Borvane.conf");
}

SettingsFileStore::SettingsFileStore(QString file_name, int timeout, QString autostart_file)
    : file_name_(std::move(file_name)), timeout_(timeout), autostart_entry_(std::move(autostart_file)) {
  constexpr int interval = 250;  // milliseconds
  retry_.setInterval(interval);
  QObject::connect(&retry_, &QTimer::timeout, &retry_, [this] { WriteKept(); });
}

std::optional<QByteArray> SettingsFileStore::Content() {
  // What cannot be read just now can often be read the next moment. Values that seem to be missing would be created
  // again.
  constexpr int attempts = 3;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (std::optional<QByteArray> content = ContentOfFile(file_name_)) {
      last_content_ = *content;
      return content;
    }
  }
  return {};
}

SettingsFileStore::Value *SettingsFileStore::Kept(const QByteArray &section, const QByteArray &name) {
  const auto kept = std::find_if(kept_.begin(), kept_.end(),
                                 [&](const Value &value) { return value.section == section && value.name == name; });
  return kept == kept_.end() ? nullptr : &*kept;
}

std::optional<QString> SettingsFileStore::TextOf(const QByteArray &section, const QByteArray &name) {
  if (const Value *kept = Kept(section, name))
    return kept->text;
  if (events_ == 0)
    return ValueIn(Content().value_or(last_content_), section, name);
  if (!snapshot_.content)
    snapshot_.content = Content().value_or(last_content_);
  return ValueIn(*snapshot_.content, section, name);
}

std::optional<StoredValue> SettingsFileStore::Read(std::string_view key, std::string_view name) {
  // A scan asks for the same value at each of its rows.
  const auto seen = std::find_if(snapshot_.values.begin(), snapshot_.values.end(),
                                 [&](const Snapshot::Value &value) { return value.name == name && value.key == key; });
  if (seen != snapshot_.values.end())
    return seen->value;

  const std::optional<QByteArray> section = SectionOf(key);
  const std::optional<QString> text = section ? TextOf(*section, Bytes(name)) : std::nullopt;
  std::optional<StoredValue> value;
  if (text)
    value = ProgramText(*text);
  if (events_ > 0)
    snapshot_.values.push_back({std::string(key), std::string(name), value});
  return value;
}

void SettingsFileStore::Write(std::string_view key, std::string_view name, std::string_view text) {
  if (key == run_key) {
    // Another file, and so not part of what is written together: whatever comes first has to be on the disk first.
    WriteKept();
    autostart_entry_.Write(name, text);
    return;
  }
  const std::optional<QByteArray> section = SectionOf(key);
  if (!section || TextOf(*section, Bytes(name)) == UnicodeText(text))
    return;
  std::erase_if(snapshot_.values, [&](const Snapshot::Value &value) { return value.name == name; });
  if (Value *kept = Kept(*section, Bytes(name)))
    kept->text = UnicodeText(text);
  else
    kept_.push_back({*section, Bytes(name), UnicodeText(text)});
  if (events_ == 0)
    WriteKept();
}

void SettingsFileStore::Delete(std::string_view key, std::string_view /*name*/) {
  if (key != run_key)
    return;
  WriteKept();
  autostart_entry_.Delete();
}

void SettingsFileStore::BeginEvent() {
  WriteKept();
  snapshot_ = {};
  ++events_;
}

void SettingsFileStore::EndEvent() {
  WriteKept();
  snapshot_ = {};
  --events_;
}

void SettingsFileStore::WriteKept() {
  // Who has waited in vain once does not wait again at each event.
  if (!kept_.empty())
    WriteKeptWithin(retry_.isActive() ? 0 : timeout_);
}

void SettingsFileStore::WriteKeptWithin(int timeout) {
  const QString file = RealName(file_name_);
  MakeFolder(QFileInfo(file).path());
  const WriteLock lock(LockFile(file), timeout);
  if (!lock.IsHeld()) {
    retry_.start();
    return;
  }
  retry_.stop();
  WriteValues(file, std::exchange(kept_, {}));
  snapshot_ = {};
}

void SettingsFileStore::WriteValues(const QString &file, const std::vector<Value> &values) {
  // Nothing is written over a file that cannot be read or copied: a write that fails does nothing.
  const std::optional<QByteArray> content = Content();
  if (!content)
    return;
  QByteArray changed = WithoutDamage(*content);
  if (changed != *content && !CopyDamagedFile(file, *content))
    return;
  for (const Value &value : values)
    changed = WithValue(changed, value.section, value.name, value.text);
  // A value can have been written twice and be what it was.
  if (changed != *content)
    WriteFileDurably(file, changed, file);
}

void SettingsFileStore::Finish() {
  if (kept_.empty())
    return;
  WriteKeptWithin(last_timeout);
  if (kept_.empty())
    return;
  QStringList names;
  for (const Value &value : kept_)
    names.append(QString::fromUtf8(value.name));
  names.removeDuplicates();
  std::fprintf(stderr, "borvane: settings lost, since another program holds %s: %s\n",
               qPrintable(LockFile(RealName(file_name_))), qPrintable(names.join(QStringLiteral(", "))));
}

}  // namespace borvane

#endif
