#include "support/scan_case.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace borvane {

namespace {

constexpr std::string_view hex_digits = "0123456789ABCDEF";
constexpr std::size_t shortest_short_run = 20;

std::string EscapedCharacter(char character) {
  switch (character) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    case '\\':
      return "\\\\";
    case '|':
      return "\\p";
    case '}':
      return "\\x7D";
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(character);
  if (byte >= 0x20 && byte < 0x7F)
    return std::string(1, character);
  return {'\\', 'x', hex_digits[byte / 16], hex_digits[byte % 16]};
}

int Number(std::string_view digits, int base) {
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  if (error != std::errc() || end != digits.data() + digits.size())
    throw std::runtime_error("\"" + std::string(digits) + "\" is not a number");
  return number;
}

/// Removes the escape at the start of `text`, after its backslash, and returns what it means.
std::string TakeEscape(std::string_view &text) {
  const auto take = [&](std::size_t length) {
    if (text.size() < length)
      throw std::runtime_error("an escape is cut off");
    const std::string_view piece = text.substr(0, length);
    text.remove_prefix(length);
    return piece;
  };
  const char kind = take(1).front();
  constexpr std::string_view kinds = "nrtp\\";
  constexpr std::string_view characters = "\n\r\t|\\";
  if (const std::size_t place = kinds.find(kind); place != std::string_view::npos)
    return std::string(1, characters[place]);
  if (kind == 'x')
    return std::string(1, static_cast<char>(Number(take(2), 16)));
  const std::size_t brace = text.find('}');
  const std::size_t blank = text.find(' ');
  if (kind != '{' || brace == std::string_view::npos || blank > brace)
    throw std::runtime_error("unknown escape \\" + std::string(1, kind));
  const int times = Number(text.substr(0, blank), 10);
  const std::string piece = Unescaped(text.substr(blank + 1, brace - blank - 1));
  text.remove_prefix(brace + 1);
  std::string repeated;
  for (int i = 0; i < times; ++i)
    repeated += piece;
  return repeated;
}

std::vector<std::string> Fields(std::string_view line) {
  if (line.size() < 2 || line.front() != '|' || line.back() != '|')
    throw std::runtime_error("a row begins and ends with a bar: " + std::string(line));
  std::vector<std::string> fields;
  line.remove_prefix(1);
  while (!line.empty()) {
    const std::size_t bar = line.find('|');
    fields.push_back(Unescaped(line.substr(0, bar)));
    line.remove_prefix(bar + 1);
  }
  return fields;
}

std::string FieldsText(const std::vector<std::string> &fields) {
  std::string text = "|";
  for (const std::string &field : fields)
    text += Escaped(field) + "|";
  return text;
}

/// Reads the value of the line "`key`: value" from `lines`.
std::string TakeValue(std::istream &lines, const std::string &key) {
  std::string line;
  do {
    if (!std::getline(lines, line))
      throw std::runtime_error("there is no line \"" + key + ":\"");
  } while (line.starts_with('#'));
  if (!line.starts_with(key + ":"))
    throw std::runtime_error("\"" + key + ":\" is expected, not " + line);
  line.erase(0, key.size() + 1);
  return line.starts_with(' ') ? line.substr(1) : line;
}

void ReadPage(std::istream &lines, std::string &page) {
  std::string line;
  while (std::getline(lines, line)) {
    if (line == "rows:")
      return;
    std::string_view text = line;
    const std::size_t backslashes = text.size() - (text.find_last_not_of('\\') + 1);
    const bool has_no_line_feed = backslashes % 2 == 1;
    if (has_no_line_feed)
      text.remove_suffix(1);
    page += Unescaped(text);
    if (!has_no_line_feed)
      page += '\n';
  }
  throw std::runtime_error("there is no line \"rows:\"");
}

void ReadOutcome(std::istream &lines, ScanOutcome &outcome) {
  while (lines.peek() == '|') {
    std::string line;
    std::getline(lines, line);
    outcome.rows.push_back(Fields(line));
  }
  outcome.newest = Fields(TakeValue(lines, "newest"));
  const std::string end = TakeValue(lines, "ends");
  if (end.starts_with("failure "))
    outcome.failure = Number(std::string_view(end).substr(8), 10);
  else if (end != "normal")
    throw std::runtime_error("a scan ends normal or with a failure, not " + end);
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const std::string character = EscapedCharacter(text.front());
    const std::size_t run = std::min(text.find_first_not_of(text.front()), text.size());
    const std::size_t taken = run >= shortest_short_run ? run : 1;
    escaped += taken > 1 ? "\\{" + std::to_string(run) + " " + character + "}" : character;
    text.remove_prefix(taken);
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const char character = text.front();
    text.remove_prefix(1);
    plain += character == '\\' ? TakeEscape(text) : std::string(1, character);
  }
  return plain;
}

ScanCase ReadScanCase(const std::filesystem::path &file) {
  try {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    std::istringstream lines(content.str());
    ScanCase scan_case;
    scan_case.file = file;
    scan_case.name = TakeValue(lines, "name");
    scan_case.scanner = TakeValue(lines, "scanner");
    TakeValue(lines, "page");
    ReadPage(lines, scan_case.page);
    scan_case.head =
        content.str().substr(0, static_cast<std::size_t>(lines.tellg()) - std::string_view("rows:\n").size());
    ReadOutcome(lines, scan_case.expected);
    return scan_case;
  } catch (const std::exception &error) {
    throw std::runtime_error(file.string() + ": " + error.what());
  }
}

std::vector<std::filesystem::path> ScanCaseFiles(const std::filesystem::path &folder) {
  std::vector<std::filesystem::path> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".case")
      files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string OutcomeText(const ScanOutcome &outcome) {
  std::string text = "rows:\n";
  for (const std::vector<std::string> &row : outcome.rows)
    text += FieldsText(row) + "\n";
  text += "newest: " + FieldsText(outcome.newest) + "\n";
  text += "ends: " + (outcome.failure == 0 ? "normal" : "failure " + std::to_string(outcome.failure)) + "\n";
  return text;
}

}  // namespace borvane
