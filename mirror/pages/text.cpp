#include "pages/text.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringEncoder>
#include <array>
#include <cmath>
#include <utility>

namespace borvane::mirror {

namespace {

constexpr qsizetype longest_place = 200;
constexpr double miles_per_kilometre = 0.621371;

// Letters that carry no accent which could be taken off, and marks with a look-alike in the code page.
constexpr std::array<std::pair<char16_t, char>, 12> look_alikes = {{
    {u'ı', 'i'},
    {u'ł', 'l'},
    {u'Ł', 'L'},
    {u'đ', 'd'},
    {u'Đ', '\xd0'},
    {u'ħ', 'h'},
    {u'Ħ', 'H'},
    {u'ŋ', 'n'},
    {u'\u02bb', '\x91'},  // the okina of Hawaiian names
    {u'\u02bc', '\x92'},
    {u'\u2212', '-'},
    {u'\u2032', '\''},
}};

/// The characters of the bytes from 0x80 on; 0 for the five that have none.
std::array<char16_t, 128> UpperHalf() {
  std::array<char16_t, 128> characters = {};
  QStringDecoder decoder("windows-1252");
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const char byte = static_cast<char>(i + 0x80);
    const QString decoded = decoder.decode(QByteArrayView(&byte, 1));
    const bool is_character = !decoded.isEmpty() && decoded[0] >= u'\xa0' && decoded[0] != QChar::ReplacementCharacter;
    characters[i] = is_character ? decoded[0].unicode() : u'\0';
  }
  return characters;
}

/// The byte for one character, or 0 when the code page lacks it.
char ByteOf(char16_t character) {
  if (character < 0x20 || (character >= 0x7f && character < 0xa0))
    return ' ';
  if (character < 0x7f)
    return static_cast<char>(character);
  static const std::array<char16_t, 128> upper_half = UpperHalf();
  for (std::size_t i = 0; i < upper_half.size(); ++i)
    if (upper_half[i] == character)
      return static_cast<char>(i + 0x80);
  for (const auto &[letter, byte] : look_alikes)
    if (letter == character)
      return byte;
  return '\0';
}

/// Whether the "&" in front of `next` could start a character reference.
bool StartsReference(char next) {
  return next == '#' || (next >= '0' && next <= '9') || (next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z');
}

}  // namespace

QByteArray PageText(const QString &text) {
  const QString composed = text.normalized(QString::NormalizationForm_C);
  QByteArray bytes;
  bytes.reserve(composed.size());
  for (qsizetype i = 0; i < composed.size(); ++i) {
    const QChar character = composed[i];
    char byte = ByteOf(character.unicode());
    if (byte == '\0' && character.decompositionTag() == QChar::Canonical)
      byte = ByteOf(character.decomposition()[0].unicode());
    if (byte == '\0' && character.isMark())
      continue;
    if (character.isLowSurrogate() && i > 0 && composed[i - 1].isHighSurrogate())
      continue;
    bytes += byte == '\0' ? '?' : byte;
  }
  return bytes;
}

QByteArray HtmlText(const QString &text) { return PageText(text.toHtmlEscaped().replace('\'', "&#39;")); }

QByteArray RowText(const QString &text) {
  QByteArray plain = PageText(text.left(longest_place));
  plain.replace('<', '\x8b').replace('>', '\x9b');
  plain.replace("recenteqs/Quakes", "recenteqs Quakes");
  QByteArray escaped;
  for (qsizetype i = 0; i < plain.size(); ++i) {
    escaped += plain[i];
    if (plain[i] == '&' && i + 1 < plain.size() && StartsReference(plain[i + 1]))
      escaped += "amp;";
  }
  return escaped;
}

QString PlaceWithMiles(const QString &place) {
  static const QRegularExpression form("^([0-9]{1,5}) ?km ([NESW]{1,3}) of (.+)$",
                                       QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch match = form.match(place);
  if (!match.hasMatch())
    return place;
  const int kilometres = match.captured(1).toInt();
  const int miles = static_cast<int>(std::lround(kilometres * miles_per_kilometre));
  return QString("%1 km (%2 mi) %3 of %4").arg(kilometres).arg(miles, 2).arg(match.captured(2), match.captured(3));
}

}  // namespace borvane::mirror
