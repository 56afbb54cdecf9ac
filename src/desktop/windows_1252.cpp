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

constexpr unsigned char behind_own = first_own + own_characters.size();

char16_t CharacterOf(char byte) {
  const auto number = static_cast<unsigned char>(byte);
  return number < first_own || number >= behind_own ? number : own_characters[number - first_own];
}

char ByteOf(char16_t character) {
  if (character < first_own || (character >= behind_own && character <= 0xFF))
    return static_cast<char>(character);
  const auto *place = std::find(own_characters.begin(), own_characters.end(), character);
  return place == own_characters.end() ? '?' : static_cast<char>(first_own + (place - own_characters.begin()));
}

}  // namespace

QString ShownText(std::string_view text) {
  QString shown(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
  std::transform(text.begin(), text.end(), shown.begin(), [](char byte) { return QChar(CharacterOf(byte)); });
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

}  // namespace borvane
