#include "desktop/settings/autostart_entry.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringDecoder>
#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/settings/durable_file.h"

namespace borvane {

namespace {

/// `argument` in the quotes of an Exec line. Its backslashes are doubled once more, as in every value of an entry.
QByteArray Quoted(const QByteArray &argument) {
  constexpr QByteArrayView special = "\"`$\\";
  QByteArray quoted;
  for (const char character : argument) {
    if (special.contains(character))
      quoted += '\\';
    quoted += character;
  }
  return '"' + quoted.replace("\\", "\\\\") + '"';
}

/// Whether every desktop starts a program with that path. An entry is UTF-8, the rules forbid "=" in a program's path,
/// and not all desktops find a program whose path has a "%".
bool IsPlain(const QByteArray &path) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(path);
  return !decoder.hasError() && std::none_of(text.begin(), text.end(), [](QChar character) {
    return character == '=' || character == '%' || character.category() == QChar::Other_Control;
  });
}

/// A shell command that starts the program with that path, in ASCII.
QByteArray ShellCommand(const QByteArray &path) {
  constexpr int octal = 8;
  QByteArray escaped;
  for (const char byte : path)
    escaped += "\\0" + QByteArray::number(static_cast<unsigned char>(byte), octal).rightJustified(3, '0');
  return "exec \"$(printf %%b '" + escaped + "')\"";
}

QByteArray ExecFor(const QByteArray &path) {
  return IsPlain(path) ? Quoted(path) : "sh -c " + Quoted(ShellCommand(path));
}

/// A value of the entry's own group; empty when it is missing.
QByteArray ValueIn(const QByteArray &entry, const QByteArray &key) {
  bool is_own_group = false;
  for (const QByteArray &line : entry.split('\n')) {
    if (line.startsWith('['))
      is_own_group = line.trimmed() == "[Desktop Entry]";
    const qsizetype equals = line.indexOf('=');
    if (is_own_group && equals > 0 && line.first(equals).trimmed() == key)
      return line.sliced(equals + 1).trimmed();
  }
  return {};
}

}  // namespace

QString UserAutostartFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/autostart/borvane.desktop");
}

AutostartEntry::AutostartEntry(QString file_name) : file_name_(std::move(file_name)) {}

void AutostartEntry::Write(std::string_view title, std::string_view program) {
  const QByteArray exec = ExecFor(QByteArrayView(program).toByteArray());
  const QByteArray entry =
      "[Desktop Entry]\nType=Application\nName=" + QByteArrayView(title).toByteArray() + "\nExec=" + exec + "\n";
  const std::optional<QByteArray> before = ContentOfFile(file_name_);
  const bool is_kept =
      is_start_ && (!before || ValueIn(*before, "Exec") == exec || ValueIn(*before, "Hidden") == "true");
  if (is_kept || before == entry)
    return;
  MakeFolder(QFileInfo(file_name_).path());
  WriteFileDurably(file_name_, entry, file_name_);
}

void AutostartEntry::Delete() { DeleteFileDurably(file_name_); }

}  // namespace borvane
