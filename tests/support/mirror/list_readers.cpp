#include "support/mirror/list_readers.h"

#include <stdexcept>

#include "support/mirror/plain_steps.h"

namespace borvane::mirror {

namespace {

using plain::FarFind;
using plain::FindAt;
using plain::Fits;
using plain::Piece;
using plain::Rest;
using plain::Trimmed;

/// The first `k` characters up to the next blank; the text goes on after it.
std::string TakeToken(std::string &text) {
  const long blank = FindAt(text, " ", 1);
  const std::string token = Piece(text, 1, blank - 1);
  text = Rest(text, blank + 1);
  return token;
}

/// Cuts the text at the row that comes next in the map list. Whether there was one.
bool FindMapRow(std::string &text) {
  long start = FindAt(text, ">map</A>", 1);
  if (start == 0)
    return false;
  const long capital = FindAt(text, ">MAP</A>", 1);
  if (capital < start)
    start = Fits(FindAt(text, ">", capital + 8) - 6);
  text = Rest(text, Fits(start + 8));
  return true;
}

ListRow ReadMapRow(std::string &text) {
  ListRow row;
  long tag = FindAt(text, "<", 1);
  row.magnitude = Trimmed(Piece(text, 1, tag - 1));
  text = Rest(text, tag + 1);

  const long end = FindAt(text, ">", 1);
  row.link = Piece(text, 10, end - 11);
  text = Rest(text, static_cast<long>(row.link.size()) + 12);

  for (std::string *field : {&row.date, &row.time, &row.latitude, &row.longitude})
    *field = TakeToken(text);

  tag = FindAt(text, "<", 1);
  row.depth = Trimmed(Piece(text, 1, tag - 1));
  text = Rest(text, Fits(tag + 5));

  tag = FindAt(text, "<", 1);
  row.place = Trimmed(Piece(text, 1, tag - 2));
  text = Rest(text, Fits(tag + 5));
  return row;
}

ListRow ReadMapAnchorRow(std::string &text, long marker, long tag) {
  ListRow row;
  row.magnitude = Trimmed(Piece(text, marker + 29, tag - marker - 29));
  const long end = FindAt(text, ">", tag);
  row.link = Piece(text, tag + 9, end - tag - 10);
  text = Rest(text, end + 1);

  for (std::string *field : {&row.date, &row.time, &row.latitude, &row.longitude})
    *field = Trimmed(TakeToken(text));

  const long depth_end = FindAt(text, "<", 1);
  row.depth = Trimmed(Piece(text, 1, depth_end - 1));
  const long place_end = FindAt(text, "<", depth_end + 1);
  row.place = Trimmed(Piece(text, depth_end + 4, place_end - depth_end - 4));
  return row;
}

/// The magnitude of the cell at `cell`, plain, bold, or bold and coloured; the text goes on after its "<".
std::string TakeWorldMagnitude(std::string &text, long cell) {
  long end = FindAt(text, "<", cell);
  std::string magnitude = Trimmed(Piece(text, cell + 7, end - cell - 7));
  if (magnitude.empty()) {
    const long strong = FindAt(text, "strong>", cell);
    end = FindAt(text, "<", strong);
    magnitude = Trimmed(Piece(text, strong + 7, end - strong - 7));
    if (magnitude.empty()) {
      const long coloured = Fits(strong + 29);
      end = FindAt(text, "<", coloured);
      magnitude = Trimmed(Piece(text, coloured, end - coloured));
    }
  }
  text = Rest(text, end + 1);
  return magnitude;
}

std::string WorldPlace(const std::string &text) {
  const long cell = Fits(FindAt(text, "<td>", 1) + 4);
  long end = FindAt(text, "<", cell);
  std::string place = Piece(text, cell, end - cell);
  if (place.empty()) {
    const long strong = FindAt(text, "strong>", cell);
    end = FindAt(text, "<", strong);
    place = Trimmed(Piece(text, strong + 7, end - strong - 7));
    if (place.empty()) {
      const long coloured = Fits(strong + 29);
      end = FindAt(text, "<", coloured);
      place = Trimmed(Piece(text, coloured, end - coloured));
    }
  }
  return place;
}

/// The next row of a world list; nothing where the scan ends normally.
std::optional<ListRow> ReadWorldRow(std::string &text) {
  const long map = FindAt(text, "MAP", 1);
  const long cell = FindAt(text, "nowrap>", map);
  if (cell == 0)
    return std::nullopt;
  ListRow row;
  row.magnitude = TakeWorldMagnitude(text, cell);

  const long link = FindAt(text, "href=", 1);
  const long link_end = FindAt(text, ">", link);
  row.link = Piece(text, link + 7, link_end - link - 8);
  text = Rest(text, link_end + 1);

  const long blank = FindAt(text, " ", 1);
  const long time_end = FindAt(text, "<", blank);
  row.date = Piece(text, 1, blank - 1);
  row.time = Piece(text, blank + 1, time_end - blank - 1);

  for (std::string *field : {&row.latitude, &row.longitude, &row.depth}) {
    const long number = Fits(FindAt(text, "nowrap>", 1) + 8);
    const long start = FindAt(text, ">", number);
    const long end = FindAt(text, "<", start);
    *field = Trimmed(Piece(text, start + 1, end - start - 1));
    text = Rest(text, end + 1);
  }

  row.place = WorldPlace(text);
  return row;
}

/// The text of the region table's next link, which becomes the link of `row`; the text goes on at it. `html` is where
/// the link's address ended.
std::string TakeRegionLink(std::string &text, ListRow &row, long &html) {
  const long href = FindAt(text, "href", 1);
  html = FindAt(text, "html", 1);
  row.link = Piece(text, href + 6, html - href - 2);
  text = Rest(text, Fits(html + 6));
  return Piece(text, 1, FindAt(text, "<", 1) - 1);
}

/// Reads with `read` until it says that there is no further row or that the page is used up.
template <typename Read>
ListReading ReadRows(std::string text, Read read) {
  ListReading reading;
  try {
    do {
      const std::optional<ListRow> row = read(text);
      if (!row)
        break;
      reading.rows.push_back(*row);
    } while (!text.empty());
  } catch (const std::runtime_error &error) {
    reading.fault = error.what();
  }
  return reading;
}

}  // namespace

ListReading ReadMapList(std::string_view page) {
  return ReadRows(std::string(page),
                  [](std::string &text) { return FindMapRow(text) ? std::optional(ReadMapRow(text)) : std::nullopt; });
}

ListReading ReadMapAnchorList(std::string_view page) {
  return ReadRows(std::string(page), [](std::string &text) -> std::optional<ListRow> {
    const long marker = FindAt(text, "MAP<", 1);
    const long tag = FindAt(text, "<", marker + 28);
    if (marker == 0)
      return std::nullopt;
    return ReadMapAnchorRow(text, marker, tag);
  });
}

ListReading ReadWorldList(std::string_view page) { return ReadRows(std::string(page), ReadWorldRow); }

HeadlineReading ReadWorldHeadline(std::string_view page) {
  HeadlineReading reading;
  std::string text(page);
  try {
    reading.row = ReadWorldRow(text);
  } catch (const std::runtime_error &error) {
    reading.fault = error.what();
  }
  return reading;
}

RegionReading ReadRegionTable(std::string_view page) {
  RegionReading reading;
  std::string text(page);
  try {
    const long start = FindAt(text, "<td><center>Region</center></td>", 1);
    if (start == 0)
      return reading;
    reading.has_table = true;
    text = Rest(text, start + 1);
    ListRow row;
    long html = 0;
    row.date = TakeRegionLink(text, row, html);
    row.magnitude = TakeRegionLink(text, row, html);
    row.place = TakeRegionLink(text, row, html);
    reading.list.rows.push_back(row);
    // Whatever the magnitude's text is, a table that goes on fails at its first row.
    if (FarFind(text, "</table>", 1) >= html)
      reading.list.fault = "a table with more than one row";
  } catch (const std::runtime_error &error) {
    reading.list.fault = error.what();
  }
  return reading;
}

EventReading ReadEventPage(std::string_view page) {
  const std::string text(page);
  EventReading reading;
  const auto after = [&](const char *label, long distance) {
    const long start = Fits(FindAt(text, label, 1) + distance);
    return Piece(text, start, FindAt(text, "<", start) - start);
  };
  try {
    reading.latitude = after("Latitude:", 19);
    reading.longitude = after("Longitude:", 20);
    reading.depth = after("Depth:", 16);
  } catch (const std::runtime_error &error) {
    reading.fault = error.what();
  }
  return reading;
}

}  // namespace borvane::mirror
