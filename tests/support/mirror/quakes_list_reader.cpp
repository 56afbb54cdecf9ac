#include "support/mirror/quakes_list_reader.h"

#include <stdexcept>

#include "support/mirror/plain_steps.h"

namespace borvane::mirror {

namespace {

using plain::FarFind;
using plain::FindAt;
using plain::Piece;
using plain::Rest;
using plain::Trimmed;

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
