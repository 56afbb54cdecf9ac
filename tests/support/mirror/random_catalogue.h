#pragma once

#include <QStringList>
#include <algorithm>
#include <random>

#include "catalogue/catalogue.h"

namespace borvane::mirror {

/// Catalogues that no network would publish: every text that means something to a scanner in places and ids, missing
/// and negative figures, magnitudes around each limit. The same seed gives the same catalogue.
class RandomCatalogue {
 public:
  explicit RandomCatalogue(unsigned seed) : random_(seed) {}

  /// A catalogue of that many events, or of fewer where two have the same id.
  Catalogue Make(int count) {
    const int kind = Number(0, 3);
    std::vector<Event> events;
    for (int i = 0; i < count; ++i)
      events.push_back(MakeEvent(kind));
    return Catalogue(std::move(events));
  }

  /// From `least` to `greatest`.
  int Number(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(random_); }

 private:
  bool OneIn(int count) { return Number(1, count) == 1; }

  QString Chosen(const QStringList &texts) { return texts[Number(0, static_cast<int>(texts.size()) - 1)]; }

  QString Joined(const QStringList &pieces, int length) {
    QString text;
    while (text.size() < length)
      text += Chosen(pieces);
    return text.left(length);
  }

  /// `kind` 0: weak events only; 1: strong ones only; 2 and 3: all, some without a magnitude.
  std::optional<double> Magnitude(int kind) {
    if (kind == 0)
      return Number(-99, 29) / 10.0;
    if (kind == 1)
      return Number(30, 999) / 10.0;
    if (OneIn(8))
      return std::nullopt;
    static const std::vector<double> limits = {2.49, 2.5, 2.95, 2.99, 3.0, 4.49, 4.5, 4.96, 5.0, 5.99, 6.0, 0.0, -0.04};
    return OneIn(2) ? limits[static_cast<std::size_t>(Number(0, static_cast<int>(limits.size()) - 1))]
                    : Number(-994, 9994) / 100.0;
  }

  QString Place() {
    static const QStringList pieces = {"MAP",
                                       "html",
                                       "nowrap",
                                       "MAP<",
                                       ">MAP</A>",
                                       ">map</A>",
                                       "map",
                                       "nowrap>",
                                       "<td>",
                                       "strong>",
                                       "</table>",
                                       "</TABLE>",
                                       "href",
                                       "href=\"",
                                       "Latitude:",
                                       "Longitude:",
                                       "Depth:",
                                       "&",
                                       "&amp",
                                       "&#60;",
                                       " ",
                                       "  ",
                                       "/recenteqs/Quakes/",
                                       "\n",
                                       "\t",
                                       "é",
                                       "東",
                                       "\U0001F30B",
                                       "'",
                                       "\"",
                                       "=",
                                       "a",
                                       "Sometown",
                                       ", CA",
                                       "<td><center>Region</center></td>"};
    switch (Number(0, 5)) {
      case 0:
        return "";
      case 1:
        return QString("%1 km SSW of %2").arg(Number(0, 1200)).arg(Joined(pieces, Number(1, 40)));
      case 2:
        return Chosen(pieces);
      case 3:
        return Joined(pieces, 200);
      default:
        return Joined(pieces, Number(1, 200));
    }
  }

  Event MakeEvent(int kind) {
    static const QStringList pieces = {"html", "href", "MAP", "map", "nowrap", "ci", "us",
                                       "1",    "2",    "3",   "-",   "_",      "."};
    Event event;
    event.id = Joined(pieces, OneIn(4) ? 64 : Number(1, 16));
    if (OneIn(3))
      event.credit = Place();
    event.origin_time = Number(-2'000'000'000, 2'000'000'000) * 1000LL;
    event.latitude = Number(-90'000, 90'000) / 1000.0;
    event.longitude = Number(-180'000, 180'000) / 1000.0;
    if (!OneIn(4))
      event.depth = Number(-1000, 63'710) / 10.0;
    event.magnitude = Magnitude(kind);
    event.place = Place();
    event.network = OneIn(3) ? Place() : "us";
    event.kind = OneIn(3) ? Place() : "earthquake";
    return event;
  }

  std::mt19937 random_;
};

}  // namespace borvane::mirror
