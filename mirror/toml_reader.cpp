#include "toml_reader.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace borvane::mirror {

namespace {

using namespace std::chrono_literals;

constexpr qsizetype longest_value = 4'000;

/// The text as the parser is given it. Version 3.3 of toml++ has no defined outcome for most characters beyond ASCII
/// where a blank may be, so each of them, and "~", becomes "~e9;". Where TOML has no place for the character, it has
/// none for this.
QByteArray AsciiOf(const QString &text) {
  QByteArray ascii;
  ascii.reserve(text.size());
  for (const QChar character : text) {
    if (character.unicode() < 0x80 && character != '~')
      ascii += character.toLatin1();
    else
      ascii.append('~').append(QByteArray::number(character.unicode(), 16)).append(';');
  }
  return ascii;
}

/// "90s", "5min", "1h" or "7d"; nothing for anything else.
std::optional<std::chrono::seconds> DurationOf(const QString &text) {
  static const QRegularExpression form(R"(\A([0-9]{1,7})(s|min|h|d)\z)");
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch())
    return std::nullopt;
  const std::chrono::seconds number(match.captured(1).toInt());
  const QString unit = match.captured(2);
  return number * (unit == "s" ? 1 : unit == "min" ? 60 : unit == "h" ? 3'600 : 86'400);
}

}  // namespace

toml::table ParseToml(const QString &text) {
  const QByteArray ascii = AsciiOf(text);
  return toml::parse(std::string_view(ascii.constData(), static_cast<std::size_t>(ascii.size())));
}

QString TextOf(std::string_view parsed) {
  static const QRegularExpression escape("~([0-9a-f]{1,4});");
  const QString text = QString::fromUtf8(parsed.data(), static_cast<qsizetype>(parsed.size()));
  QString original;
  qsizetype end = 0;
  for (QRegularExpressionMatchIterator matches = escape.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    original += QStringView(text).sliced(end, match.capturedStart() - end);
    original += QChar(match.captured(1).toUShort(nullptr, 16));
    end = match.capturedEnd();
  }
  return original + text.sliced(end);
}

TomlReader::TomlReader(const QString &file) : folder_(QFileInfo(file).absoluteDir()) {}

std::vector<std::pair<unsigned, QString>> TomlReader::TakeFaults() {
  std::stable_sort(faults_.begin(), faults_.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
  return std::move(faults_);
}

std::optional<QString> TomlReader::ReadText(const QString &name, const toml::node &node) {
  if (const toml::value<std::string> *value = node.as_string()) {
    const QString text = TextOf(value->get());
    const bool has_controls =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
    if (!text.isEmpty() && text.size() <= longest_value && !has_controls)
      return text;
    Fault(node.source(), name + (text.isEmpty() ? ": needs a value" : ": is too long or has a control character"));
    return std::nullopt;
  }
  Fault(node.source(), name + ": must be a text in quotes");
  return std::nullopt;
}

QStringList TomlReader::ReadTexts(const QString &name, const toml::node &node) {
  QStringList texts;
  const toml::array *array = node.as_array();
  if (!array) {
    if (const std::optional<QString> text = ReadText(name, node))
      texts.append(*text);
    return texts;
  }
  for (const toml::node &element : *array)
    if (const std::optional<QString> text = ReadText(name, element))
      texts.append(*text);
  return texts;
}

std::optional<bool> TomlReader::ReadTruth(const QString &name, const toml::node &node) {
  if (const toml::value<bool> *value = node.as_boolean())
    return value->get();
  Fault(node.source(), name + ": must be true or false");
  return std::nullopt;
}

std::optional<int> TomlReader::ReadNumber(const QString &name, const toml::node &node, int least, int most) {
  const toml::value<std::int64_t> *value = node.as_integer();
  if (value && value->get() >= least && value->get() <= most)
    return static_cast<int>(value->get());
  Fault(node.source(), name + QString(": must be a whole number from %1 to %2").arg(least).arg(most));
  return std::nullopt;
}

std::optional<double> TomlReader::ReadDegrees(const QString &name, const toml::node &node, int most) {
  // It may be written without a point, and may be "nan".
  const std::optional<double> value = node.is_number() ? node.value<double>() : std::nullopt;
  if (value && *value >= -most && *value <= most)
    return value;
  Fault(node.source(), name + QString(": must be a number from -%1 to %1").arg(most));
  return std::nullopt;
}

std::chrono::seconds TomlReader::ReadDuration(const QString &name, const toml::node &node, std::chrono::seconds most) {
  const std::optional<QString> text = ReadText(name, node);
  const std::optional<std::chrono::seconds> duration = text ? DurationOf(*text) : std::nullopt;
  if (duration && *duration >= 1s && *duration <= most)
    return *duration;
  if (text)
    Fault(node.source(),
          name + QString(R"(: must be a time such as "90s", "5min", "1h" or "7d", at most %1 days)").arg(most / 24h));
  return most;
}

QString TomlReader::ReadReadableFile(const QString &name, const toml::node &node) {
  const std::optional<QString> text = ReadText(name, node);
  QString file = PathOf(text.value_or(QString()));
  const QFileInfo info(file);
  if (text && !(info.isFile() && info.isReadable()))
    Fault(node.source(), name + ": there is no file " + file + " that can be read");
  return file;
}

}  // namespace borvane::mirror
