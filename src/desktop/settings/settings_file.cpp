#include "desktop/settings/settings_file.h"

#include <QByteArrayView>
#include <algorithm>
#include <array>

namespace borvane {

namespace {

constexpr QByteArrayView general = "General";

struct Escape {
  char letter;  // after the backslash
  char character;
};

constexpr std::array escapes = {Escape{'"', '"'}, Escape{'\\', '\\'}, Escape{'n', '\n'}, Escape{'0', '\0'}};

/// The escape at the start of `text`; null when there is none.
const Escape *EscapeAt(QByteArrayView text) {
  if (text.size() < 2 || text[0] != '\\')
    return nullptr;
  const auto *escape =
      std::find_if(escapes.begin(), escapes.end(), [&](const Escape &known) { return known.letter == text[1]; });
  return escape == escapes.end() ? nullptr : escape;
}

QString TextOf(QByteArrayView raw) {
  QByteArray text;
  for (qsizetype i = 0; i < raw.size(); ++i) {
    if (const Escape *escape = EscapeAt(raw.sliced(i))) {
      text += escape->character;
      ++i;
    } else if (raw[i] != '"') {
      text += raw[i];
    }
  }
  return QString::fromUtf8(text);
}

QByteArray RawText(const QString &text) {
  QByteArray raw;
  for (const char byte : text.toUtf8()) {
    const auto *escape =
        std::find_if(escapes.begin(), escapes.end(), [&](const Escape &known) { return known.character == byte; });
    if (escape == escapes.end())
      raw += byte;
    else
      raw.append('\\').append(escape->letter);
  }
  const bool needs_quotes = raw.contains(';') || raw.trimmed() != raw;
  return needs_quotes ? '"' + raw + '"' : raw;
}

bool StartsComment(QByteArrayView text) { return text.startsWith(';') || text.startsWith('#'); }

/// A line of the file, as views of its content.
struct Line {
  enum class Kind { Other, Section, Value };

  QByteArrayView whole = {};  ///< with its line feed
  Kind kind = Kind::Other;
  QByteArrayView name = {};  ///< of the section or the value
  QByteArrayView raw = {};   ///< the value's text as the file has it
  bool is_damaged = false;
};

void ReadSection(QByteArrayView text, Line &line) {
  const qsizetype bracket = text.indexOf(']');
  const qsizetype end = bracket < 0 ? text.size() : bracket;
  const QByteArrayView rest = text.sliced(std::min(end + 1, text.size())).trimmed();
  line.kind = Line::Kind::Section;
  line.name = text.first(end).sliced(1).trimmed();
  line.is_damaged = bracket < 0 || !(rest.isEmpty() || StartsComment(rest));
}

void ReadValue(QByteArrayView text, Line &line) {
  const qsizetype equals = std::max<qsizetype>(text.indexOf('='), 0);
  line.name = text.first(equals).trimmed();
  if (line.name.isEmpty()) {
    line.is_damaged = true;
    return;
  }
  const QByteArrayView value = text.sliced(equals + 1);
  bool is_quoted = false;
  qsizetype end = 0;
  while (end < value.size() && (is_quoted || value[end] != ';')) {
    if (value[end] == '"')
      is_quoted = !is_quoted;
    end += EscapeAt(value.sliced(end)) == nullptr ? 1 : 2;
  }
  line.kind = Line::Kind::Value;
  line.raw = value.first(end).trimmed();
  line.is_damaged = is_quoted;
}

/// Takes the next line off the start of `rest`.
Line TakeLine(QByteArrayView &rest) {
  const qsizetype line_feed = rest.indexOf('\n');
  Line line = {.whole = line_feed < 0 ? rest : rest.first(line_feed + 1)};
  rest = rest.sliced(line.whole.size());

  constexpr QByteArrayView byte_order_mark = "\xEF\xBB\xBF";
  QByteArrayView text = line.whole.trimmed();
  if (text.startsWith(byte_order_mark))
    text = text.sliced(byte_order_mark.size()).trimmed();
  if (text.contains('\0'))
    line.is_damaged = true;
  else if (text.startsWith('['))
    ReadSection(text, line);
  else if (!text.isEmpty() && !StartsComment(text))
    ReadValue(text, line);
  return line;
}

bool IsSameName(QByteArrayView one, QByteArrayView other) { return one.compare(other, Qt::CaseInsensitive) == 0; }

/// Where a value is in a file.
struct Place {
  std::optional<QByteArrayView> raw = {};        ///< nothing when the value is missing
  std::optional<qsizetype> end_of_section = {};  ///< nothing when the section is missing
};

Place Find(QByteArrayView content, QByteArrayView section, QByteArrayView name) {
  Place place;
  QByteArrayView current = general;
  for (QByteArrayView rest = content; !rest.isEmpty();) {
    const Line line = TakeLine(rest);
    if (line.kind == Line::Kind::Section)
      current = line.name;
    // Comments after a section's last value belong to what follows.
    if (line.kind == Line::Kind::Other || !IsSameName(current, section))
      continue;
    place.end_of_section = rest.data() - content.data();
    if (line.kind == Line::Kind::Value && IsSameName(line.name, name))
      place.raw = line.raw;
  }
  return place;
}

}  // namespace

std::optional<QString> ValueIn(const QByteArray &content, const QByteArray &section, const QByteArray &name) {
  const Place place = Find(content, section, name);
  return place.raw ? std::optional(TextOf(*place.raw)) : std::nullopt;
}

QByteArray WithValue(QByteArray content, const QByteArray &section, const QByteArray &name, const QString &text) {
  const Place place = Find(content, section, name);
  const QByteArray raw = RawText(text);
  if (place.raw)
    return content.replace(place.raw->data() - content.constData(), place.raw->size(), raw);

  QByteArray added = name + '=' + raw + '\n';
  if (!place.end_of_section)
    added.prepend((content.isEmpty() ? "[" : "\n[") + section + "]\n");
  const qsizetype end = place.end_of_section.value_or(content.size());
  if (end > 0 && content[end - 1] != '\n')
    added.prepend('\n');
  return content.insert(end, added);
}

QByteArray WithoutDamage(const QByteArray &content) {
  QByteArray whole;
  for (QByteArrayView rest = content; !rest.isEmpty();) {
    const Line line = TakeLine(rest);
    if (!line.is_damaged)
      whole += line.whole;
    else if (line.kind == Line::Kind::Section)
      whole += '[' + line.name.toByteArray() + "]\n";
    else if (line.kind == Line::Kind::Value)
      whole += line.name.toByteArray() + '=' + RawText(TextOf(line.raw)) + '\n';
  }
  return whole;
}

}  // namespace borvane
