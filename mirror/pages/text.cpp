#include "pages/text.h"

#include <QStringDecoder>
#include <QStringEncoder>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
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

/// Whether the character is the same in ASCII, Windows-1252 and Unicode, and can be shown.
bool IsPlain(QChar character) { return character.unicode() >= 0x20 && character.unicode() < 0x7f; }

/// Whether the "&" in front of `next` could start a character reference.
bool StartsReference(char next) {
  return next == '#' || (next >= '0' && next <= '9') || (next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z');
}

/// A place by its distance from another: "6km ENE of Yucaipa, CA".
struct Distance {
  int kilometres;
  QString rest;  ///< "ENE of Yucaipa, CA"
};

/// The distance that the place begins with; nothing for every other place.
std::optional<Distance> DistanceOf(const QString &place) {
  constexpr qsizetype most_digits = 5;
  constexpr qsizetype most_directions = 3;
  const auto end_of = [&](qsizetype from, qsizetype most, QStringView characters) {
    qsizetype end = from;
    while (end < place.size() && end - from < most && characters.contains(place[end]))
      ++end;
    return end;
  };
  const qsizetype number = end_of(0, most_digits, u"0123456789");
  const qsizetype unit = end_of(number, 1, u" ");
  if (number == 0 || !QStringView(place).sliced(unit).startsWith(u"km "))
    return std::nullopt;
  const qsizetype direction = unit + 3;
  const qsizetype direction_end = end_of(direction, most_directions, u"NESW");
  const QStringView rest = QStringView(place).sliced(direction_end);
  if (direction_end == direction || !rest.startsWith(u" of ") || rest.size() == 4)
    return std::nullopt;
  return Distance{place.first(number).toInt(), place.sliced(direction)};
}

}  // namespace

QByteArray PageText(const QString &text) {
  if (std::all_of(text.begin(), text.end(), IsPlain))
    return text.toLatin1();
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
  if (!plain.contains('&'))
    return plain;
  QByteArray escaped;
  for (qsizetype i = 0; i < plain.size(); ++i) {
    escaped += plain[i];
    if (plain[i] == '&' && i + 1 < plain.size() && StartsReference(plain[i + 1]))
      escaped += "amp;";
  }
  return escaped;
}

QString PlaceWithMiles(const QString &place) {
  const std::optional<Distance> distance = DistanceOf(place);
  if (!distance)
    return place;
  const QString miles = QString::number(std::lround(distance->kilometres * miles_per_kilometre));
  return QString::number(distance->kilometres) + " km (" + (miles.size() < 2 ? " " : "") + miles + " mi) " +
         distance->rest;
}

}  // namespace borvane::mirror
