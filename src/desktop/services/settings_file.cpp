#include "desktop/services/settings_file.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "desktop/services/folder.h"

namespace borvane {

namespace {

constexpr QByteArrayView general = "General";

/// The length of the line at the start of `text`, without its line feed. A line feed within quotes or behind a
/// backslash belongs to the line. -1 when the text ends before the line does.
qsizetype LineLength(QByteArrayView text) {
  if (text.startsWith(';'))
    return text.indexOf('\n');
  bool is_quoted = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '\\')
      ++i;
    else if (text[i] == '"')
      is_quoted = !is_quoted;
    else if (text[i] == '\n' && !is_quoted)
      return i;
  }
  return -1;
}

/// The same for a damaged file: a quote that is never closed ends with its line, the last line with the text.
qsizetype ReadableLength(QByteArrayView text) {
  const qsizetype length = LineLength(text);
  if (length >= 0)
    return length;
  const qsizetype line_feed = text.indexOf('\n');
  return line_feed < 0 ? text.size() : line_feed;
}

bool IsWholeLine(QByteArrayView line) {
  const QByteArrayView content = line.trimmed();
  if (content.isEmpty() || line.startsWith(';'))
    return true;
  if (content.startsWith('['))
    return content.endsWith(']');
  return content.indexOf('=') > 0;
}

}  // namespace

bool IsWholeSettingsFile(const QByteArray &content) {
  QByteArrayView rest(content);
  while (!rest.isEmpty()) {
    const qsizetype length = LineLength(rest);
    if (length < 0 || !IsWholeLine(rest.first(length)))
      return false;
    rest = rest.sliced(length + 1);
  }
  return true;
}

SettingsSections ReadSections(const QByteArray &content) {
  SettingsSections sections;
  QByteArray section = general.toByteArray();
  QByteArrayView rest(content);
  while (!rest.isEmpty()) {
    const qsizetype length = ReadableLength(rest);
    const QByteArrayView line = rest.first(length).trimmed();
    rest = rest.sliced(std::min(length + 1, rest.size()));
    const qsizetype equals = line.indexOf('=');
    if (line.startsWith('[') && line.endsWith(']')) {
      section = line.sliced(1).chopped(1).trimmed().toByteArray();
      if (general.compare(section, Qt::CaseInsensitive) == 0)
        section = general.toByteArray();
    } else if (equals > 0 && !line.startsWith(';')) {
      const QByteArray name = line.first(equals).trimmed().toByteArray();
      sections[section][name] = line.sliced(equals + 1).trimmed().toByteArray();
    }
  }
  return sections;
}

QByteArray WriteSections(const SettingsSections &sections) {
  QByteArray content;
  for (const auto &[section, values] : sections) {
    content += (content.isEmpty() ? "[" : "\n[") + section + "]\n";
    for (const auto &[name, raw] : values)
      content += name + '=' + raw + '\n';
  }
  return content;
}

std::optional<QByteArray> ContentOfFile(const QString &name) {
  QFile file(name);
  if (!file.open(QFile::ReadOnly))
    return file.exists() ? std::nullopt : std::optional(QByteArray());
  QByteArray content = file.readAll();
  if (file.error() != QFile::NoError)
    return {};
  return content;
}

bool WriteFileThrough(const QString &name, const QByteArray &content, const QString &like) {
  QSaveFile file(name);
  if (!file.open(QFile::WriteOnly))
    return false;
  if (QFile::exists(like))
    file.setPermissions(QFile::permissions(like));
  // When the disk is full or broken it shows here; the new name would still come about, with nothing behind it.
  if (file.write(content) != content.size() || !WriteThrough(file) || !file.commit())
    return false;
  WriteThrough(QFileInfo(name).path());
  return true;
}

bool KeepDamagedFileAside(const QString &name, const QByteArray &content) {
  if (IsWholeSettingsFile(content))
    return true;
  for (int number = 1;; ++number) {
    const QString copy = name + QStringLiteral(".damaged-%1").arg(number);
    if (!QFile::exists(copy))
      return WriteFileThrough(copy, content, name);
    if (ContentOfFile(copy) == content)
      return true;
  }
}

}  // namespace borvane
