#include <QDataStream>
#include <QVariant>
#include <algorithm>
#include <array>

#include "desktop/services/settings_file.h"
#include "desktop/windows_1252.h"

// What stands behind "name=" in the settings file.

namespace borvane {

namespace {

struct Escape {
  char letter;  // behind the backslash
  char16_t character;
};

constexpr std::array escapes = {Escape{'a', u'\a'}, Escape{'b', u'\b'},  Escape{'f', u'\f'}, Escape{'n', u'\n'},
                                Escape{'r', u'\r'}, Escape{'t', u'\t'},  Escape{'v', u'\v'}, Escape{'"', u'"'},
                                Escape{'?', u'?'},  Escape{'\'', u'\''}, Escape{'\\', u'\\'}};

int HexDigit(QChar letter) {
  const int digit = letter.isLower() ? letter.unicode() - u'a' + 10 : letter.toUpper().unicode() - u'A' + 10;
  return letter.isDigit() ? letter.digitValue() : digit >= 10 && digit <= 15 ? digit : -1;
}

/// Reads digits of the base off the start of `rest` as the number of a character.
QChar TakeCharacter(QStringView &rest, int base) {
  unsigned number = 0;
  qsizetype length = 0;
  for (; length < rest.size(); ++length) {
    const int digit = HexDigit(rest[length]);
    if (digit < 0 || digit >= base)
      break;
    number = number * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
  }
  rest = rest.sliced(length);
  return QChar(static_cast<char16_t>(number));
}

/// Reads what stands behind a backslash. A line end there only goes on with the line.
QString TakeEscape(QStringView &rest) {
  if (rest.isEmpty())
    return {};
  const QChar letter = rest.front();
  if (letter >= u'0' && letter <= u'7')
    return TakeCharacter(rest, 8);
  rest = rest.sliced(1);
  if (letter == u'x')
    return TakeCharacter(rest, 16);
  const auto *const known =
      std::find_if(escapes.begin(), escapes.end(), [&](const Escape &escape) { return letter == escape.letter; });
  return known == escapes.end() ? QString() : QString(QChar(known->character));
}

QString Unescaped(const QByteArray &raw) {
  const QString whole = QString::fromUtf8(raw);
  QString text;
  for (QStringView rest = whole; !rest.isEmpty();) {
    const QChar letter = rest.front();
    rest = rest.sliced(1);
    if (letter == u'\\')
      text += TakeEscape(rest);
    else if (letter != u'"')
      text += letter;
  }
  return text;
}

/// What Qt writes of a value that is no text, such as "@Variant(...)": a number or something else.
StoredValue ValueOfObject(const QString &text) {
  constexpr QLatin1String variant("@Variant(");
  if (!text.startsWith(variant))
    return OtherValue{};
  QDataStream stream(text.sliced(variant.size()).chopped(1).toLatin1());
  stream.setVersion(QDataStream::Qt_4_0);
  QVariant value;
  stream >> value;
  if (value.typeId() == QMetaType::Int || value.typeId() == QMetaType::UInt)
    return static_cast<std::uint32_t>(value.toLongLong());
  return OtherValue{};
}

bool IsObject(const QString &text) {
  constexpr std::array kinds = {"@Invalid(", "@Variant(", "@ByteArray(", "@DateTime(", "@Rect(", "@Size(", "@Point("};
  return text.endsWith(')') && std::any_of(kinds.begin(), kinds.end(),
                                           [&](const char *kind) { return text.startsWith(QLatin1String(kind)); });
}

constexpr QLatin1String with_zero("@String(");

}  // namespace

StoredValue ValueOf(const QByteArray &raw) {
  const QString text = Unescaped(raw);
  if (IsObject(text))
    return ValueOfObject(text);
  if (text.startsWith(with_zero) && text.endsWith(')'))
    return ProgramText(text.sliced(with_zero.size()).chopped(1));
  return ProgramText(text.startsWith(QLatin1String("@@")) ? text.sliced(1) : text);
}

QByteArray RawText(const QString &text) {
  QString whole = text;
  if (text.contains(QChar(u'\0')))
    whole = with_zero + text + ')';
  else if (text.startsWith('@'))
    whole.prepend('@');

  QString raw;
  bool is_behind_number = false;  // a digit would count as part of it
  for (const QChar letter : whole) {
    const auto *const known = std::find_if(escapes.begin(), escapes.end(), [&](const Escape &escape) {
      return letter == escape.character && letter != u'?' && letter != u'\'';
    });
    const bool needs_number = letter < u' ' || (is_behind_number && HexDigit(letter) >= 0);
    if (letter == u'\0')
      raw += "\\0";
    else if (known != escapes.end())
      raw += QString('\\') + QLatin1Char(known->letter);
    else if (needs_number)
      raw += "\\x" + QString::number(letter.unicode(), 16);
    else
      raw += letter;
    is_behind_number = known == escapes.end() && needs_number;
  }

  const bool has_mistakable = std::any_of(
      whole.begin(), whole.end(), [](QChar letter) { return letter == u',' || letter == u';' || letter == u'='; });
  if (has_mistakable || whole.startsWith(' ') || whole.endsWith(' '))
    raw = '"' + raw + '"';
  return raw.toUtf8();
}

}  // namespace borvane
