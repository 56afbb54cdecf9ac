#include "support/mirror/quakes_list_reader.h"

#include <stdexcept>

namespace borvane::mirror {

namespace {

constexpr long greatest_position = 32767;

long FarFind(const std::string &text, const std::string &what, long from) {
  if (from < 1)
    throw std::runtime_error("search from below 1");
  if (from > static_cast<long>(text.size()))
    return 0;
  const std::size_t found = text.find(what, static_cast<std::size_t>(from - 1));
  return found == std::string::npos ? 0 : static_cast<long>(found) + 1;
}

long FindAt(const std::string &text, const std::string &what, long from) {
  const long position = FarFind(text, what, from);
  if (position > greatest_position)
    throw std::runtime_error("position beyond 16 bits");
  return position;
}

std::string Piece(const std::string &text, long from, long length) {
  if (from < 1 || length < 0)
    throw std::runtime_error("piece from below 1 or of negative length");
  if (from > static_cast<long>(text.size()))
    return "";
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(length));
}

std::string Rest(const std::string &text, long from) { return Piece(text, from, static_cast<long>(text.size())); }

std::string Trimmed(const std::string &text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Reads the row of the marker at `marker` and cuts the text up to the end of the depth.
ListRow ReadRow(std::string &text, long marker) {
  ListRow row;
  const long magnitude = marker - 15;
  const long magnitude_end = FindAt(text, " ", magnitude + 1);
  row.magnitude = Trimmed(Piece(text, magnitude, magnitude_end - magnitude));
  text = Rest(text, magnitude_end + 1);

  const long equals = FindAt(text, "=", 1);
  long end = FindAt(text, ">", equals + 1);
  row.link = Piece(text, equals + 3, end - equals - 4);

  for (std::string *field : {&row.date, &row.time, &row.latitude, &row.longitude}) {
    text = Rest(text, end + 1);
    end = FindAt(text, " ", 1);
    *field = Piece(text, 1, end - 1);
  }

  const long tag = FindAt(text, "<", 1);
  row.depth = Piece(text, end + 1, tag - end - 1);
  text = Rest(text, tag + 1);

  const long place = FindAt(text, ">", 1);
  long place_end = FindAt(text, "\n", 1);
  if (FarFind(text, "<", 1) < place_end)
    place_end = FindAt(text, "<", 1);
  row.place = Trimmed(Piece(text, place + 1, place_end - 4));
  return row;
}

}  // namespace

ListReading ReadQuakesList(std::string_view page) {
  ListReading reading;
  std::string text(page);
  try {
    while (!text.empty()) {
      const long marker = FindAt(text, "/recenteqs/Quakes/", 1);
      if (marker == 0)
        break;
      reading.rows.push_back(ReadRow(text, marker));
    }
  } catch (const std::runtime_error &error) {
    reading.fault = error.what();
  }
  return reading;
}

}  // namespace borvane::mirror
