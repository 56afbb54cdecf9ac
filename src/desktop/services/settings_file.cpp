#include "desktop/services/settings_file.h"

#include <QByteArrayView>
#include <QFile>

namespace borvane {

namespace {

bool ContentOf(const QString &name, QByteArray &content) {
  QFile file(name);
  if (!file.open(QFile::ReadOnly))
    return false;
  content = file.readAll();
  return file.error() == QFile::NoError;
}

/// The length of the line at the start of `text`, without its line feed. A line feed within quotes or behind a
/// backslash belongs to the line. -1 when the text ends before the line does.
qsizetype LineLength(QByteArrayView text) {
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

bool IsWholeLine(QByteArrayView line) {
  const QByteArrayView content = line.trimmed();
  if (content.isEmpty())
    return true;
  if (content.startsWith('['))
    return content.endsWith(']');
  return content.indexOf('=') > 0;
}

}  // namespace

bool IsWholeSettingsFile(const QByteArray &content) {
  QByteArrayView rest(content);
  while (!rest.isEmpty()) {
    const bool is_remark = rest.startsWith(';');
    const qsizetype length = is_remark ? rest.indexOf('\n') : LineLength(rest);
    if (length < 0)
      return false;
    if (!is_remark && !IsWholeLine(rest.first(length)))
      return false;
    rest = rest.sliced(length + 1);
  }
  return true;
}

void KeepDamagedFileAside(const QString &name) {
  QByteArray content;
  if (!ContentOf(name, content) || IsWholeSettingsFile(content))
    return;
  for (int number = 1;; ++number) {
    const QString copy = name + QStringLiteral(".damaged-%1").arg(number);
    QByteArray kept;
    if (ContentOf(copy, kept) && kept == content)
      return;
    if (!QFile::exists(copy)) {
      QFile::copy(name, copy);
      return;
    }
  }
}

}  // namespace borvane
