#include "desktop/services/settings_file.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

#include "desktop/services/folder.h"

namespace borvane {

namespace {

constexpr QByteArrayView general = "General";

bool StartsRemark(QByteArrayView text) { return text.startsWith(';') || text.startsWith('#'); }

/// The length of the line at the start of `text`, without its end. A line end behind a backslash belongs to the line,
/// but not in a remark.
qsizetype LineLength(QByteArrayView text) {
  const bool is_remark = StartsRemark(text);
  qsizetype i = 0;
  while (i < text.size() && text[i] != '\n' && text[i] != '\r') {
    const bool is_escape = text[i++] == '\\' && !is_remark;
    if (is_escape)
      i += text.sliced(i).startsWith("\r\n") ? 2 : 1;
  }
  return std::min(i, text.size());
}

/// What a line of the file holds.
struct Line {
  bool is_whole = true;
  QByteArray section = {};  ///< its name, or nothing
  QByteArray name = {};     ///< of the value, or nothing
  QByteArray raw = {};
};

Line SectionLine(QByteArrayView text) {
  const qsizetype end = text.indexOf(']');
  if (end < 0)
    return {.is_whole = false};
  const QByteArrayView behind = text.sliced(end + 1).trimmed();
  QByteArray section = text.first(end).sliced(1).trimmed().toByteArray();
  if (section.isEmpty() || general.compare(section, Qt::CaseInsensitive) == 0)
    section = general.toByteArray();
  return {.is_whole = behind.isEmpty() || StartsRemark(behind), .section = section};
}

/// Whether the last character is a backslash that no other one stands for.
bool EndsInBackslash(const QByteArray &raw) {
  const auto last_other = std::find_if(raw.rbegin(), raw.rend(), [](char letter) { return letter != '\\'; });
  return (last_other - raw.rbegin()) % 2 != 0;
}

Line ValueLine(QByteArrayView text) {
  const qsizetype equals = text.indexOf('=');
  const QByteArrayView name = text.first(std::max<qsizetype>(equals, 0)).trimmed();
  if (name.isEmpty())
    return {.is_whole = false};
  const QByteArrayView value = text.sliced(equals + 1);
  bool is_quoted = false;
  qsizetype i = 0;
  for (; i < value.size() && (is_quoted || value[i] != ';'); ++i) {
    if (value[i] == '\\')
      ++i;
    else if (value[i] == '"')
      is_quoted = !is_quoted;
  }
  QByteArray raw = value.first(std::min(i, value.size())).trimmed().toByteArray();
  // A backslash without anything behind it stands for nothing, and would take the next line's start when it is written.
  while (EndsInBackslash(raw)) {
    raw.chop(1);
    raw = raw.trimmed();
  }
  return {.is_whole = !is_quoted, .name = name.toByteArray(), .raw = raw};
}

/// Reads a line off the start of `rest`.
Line TakeLine(QByteArrayView &rest) {
  while (rest.startsWith(' ') || rest.startsWith('\t'))
    rest = rest.sliced(1);
  const qsizetype length = LineLength(rest);
  const QByteArrayView text = rest.first(length).trimmed();
  rest = rest.sliced(std::min(length + 1, rest.size()));
  if (text.contains('\0'))
    return {.is_whole = false};
  if (text.isEmpty() || StartsRemark(text))
    return {};
  return text.startsWith('[') ? SectionLine(text) : ValueLine(text);
}

/// The content behind the mark that some editors put in front of UTF-8.
QByteArrayView BehindMark(QByteArrayView content) {
  constexpr QByteArrayView mark = "\xEF\xBB\xBF";
  return content.startsWith(mark) ? content.sliced(mark.size()) : content;
}

}  // namespace

bool IsWholeSettingsFile(const QByteArray &content) {
  bool is_whole = content.isEmpty() || content.endsWith('\n') || content.endsWith('\r');
  for (QByteArrayView rest = BehindMark(content); !rest.isEmpty();)
    is_whole = TakeLine(rest).is_whole && is_whole;
  return is_whole;
}

SettingsSections ReadSections(const QByteArray &content) {
  SettingsSections sections;
  QByteArray section = general.toByteArray();
  for (QByteArrayView rest = BehindMark(content); !rest.isEmpty();) {
    const Line line = TakeLine(rest);
    if (!line.section.isEmpty())
      section = line.section;
    else if (!line.name.isEmpty())
      sections[section][line.name] = line.raw;
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
    return QFileInfo::exists(name) ? std::nullopt : std::optional(QByteArray());
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
