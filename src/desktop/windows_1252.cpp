#include "desktop/windows_1252.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <iterator>

namespace borvane {

namespace {

constexpr unsigned char first_own = 0x80;

/// The characters of the bytes 0x80 to 0x9F; all others have the number of their byte.
constexpr std::array<char16_t, 32> own_characters = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned char after_own = first_own + own_characters.size();

char16_t CharacterOf(char byte) {
  const auto number = static_cast<unsigned char>(byte);
  return number < first_own || number >= after_own ? number : own_characters[number - first_own];
}

char ByteOf(char16_t character) {
  if (character < first_own || (character >= after_own && character <= 0xFF))
    return static_cast<char>(character);
  const auto *place = std::find(own_characters.begin(), own_characters.end(), character);
  return place == own_characters.end() ? '?' : static_cast<char>(first_own + (place - own_characters.begin()));
}

/// Whether the character is that of an open byte.
bool IsOpen(QChar character) {
  const char16_t number = character.unicode();
  return number >= first_own && number < after_own && own_characters.at(number - first_own) == number;
}

}  // namespace

QString UnicodeText(std::string_view text) {
  QString unicode(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
  std::transform(text.begin(), text.end(), unicode.begin(), [](char byte) { return QChar(CharacterOf(byte)); });
  return unicode;
}

QString ShownText(std::string_view text) {
  QString shown = UnicodeText(text);
  std::replace_if(shown.begin(), shown.end(), IsOpen, QLatin1Char('?'));
  return shown;
}

std::string ProgramText(const QString &text) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  for (const QChar character : text) {
    // A character beyond 16 bits is a pair: one "?" for both.
    if (!character.isLowSurrogate())
      bytes += ByteOf(character.unicode());
  }
  return bytes;
}

std::string EditedText(std::string_view before, const QString &shown) {
  const QString old = ShownText(before);
  const auto [old_middle, middle] = std::mismatch(old.begin(), old.end(), shown.begin(), shown.end());
  // The ends that are equal, read from the back, as far as the equal beginnings leave room.
  const auto [old_tail, tail] = std::mismatch(old.rbegin(), std::make_reverse_iterator(old_middle), shown.rbegin(),
                                              std::make_reverse_iterator(middle));
  const auto kept_at_the_start = static_cast<std::size_t>(old_middle - old.begin());
  const auto kept_at_the_end = static_cast<std::size_t>(old_tail - old.rbegin());
  return std::string(before.substr(0, kept_at_the_start)) + ProgramText(QString(middle, tail.base() - middle)) +
         std::string(before.substr(before.size() - kept_at_the_end));
}

}  // namespace borvane
