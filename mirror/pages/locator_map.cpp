#include "pages/locator_map.h"

#include <QSet>
#include <algorithm>
#include <cmath>
#include <utility>

#include "pages/figures.h"

namespace borvane::mirror {

namespace {

constexpr double reach = 2;  // degrees of latitude from the epicentre to the edge
constexpr double side = 320;
constexpr double world_left = side + 40;
constexpr double world_scale = 0.8;  // units a degree
constexpr std::size_t most_neighbours = 500;
constexpr qsizetype most_world_places = 1000;

QByteArray Number(double value) { return QByteArray::number(std::round(value * 10) / 10); }

QByteArray Line(double x1, double y1, double x2, double y2) {
  return "<line x1=\"" + Number(x1) + "\" y1=\"" + Number(y1) + "\" x2=\"" + Number(x2) + "\" y2=\"" + Number(y2) +
         "\" stroke=\"var(--line)\"/>\n";
}

QByteArray Dot(double x, double y, double radius, const char *attributes) {
  return "<circle cx=\"" + Number(x) + "\" cy=\"" + Number(y) + "\" r=\"" + Number(radius) + "\" " + attributes +
         "/>\n";
}

QByteArray Label(double x, double y, const char *anchor, const QByteArray &text) {
  return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" text-anchor=\"" + anchor +
         "\" font-size=\"11\" fill=\"var(--quiet)\">" + text + "</text>\n";
}

/// A degree of the grid, "34N"; longitudes beyond the date line are brought back.
QByteArray DegreeLabel(int degree, char positive, char negative) {
  if (degree > 180)
    degree -= 360;
  if (degree < -180)
    degree += 360;
  QByteArray text = QByteArray::number(std::abs(degree));
  if (degree != 0 && degree != 180 && degree != -180)
    text += degree > 0 ? positive : negative;
  return text;
}

/// The window of two degrees around an event. Longitudes shrink with the distance from the equator, as on the ground.
class Window {
 public:
  explicit Window(const Event &centre)
      : centre_(centre), shrink_(std::max(0.1, std::cos(centre.latitude * std::acos(-1.0) / 180))) {}

  double ReachEast() const { return reach / shrink_; }
  double X(double degrees_east) const { return side / 2 + degrees_east * shrink_ * side / (2 * reach); }
  double Y(double degrees_north) const { return side / 2 - degrees_north * side / (2 * reach); }

  QByteArray Grid() const;
  QByteArray Neighbours(const Catalogue &catalogue) const;

 private:
  const Event &centre_;
  double shrink_;
};

QByteArray Window::Grid() const {
  QByteArray drawing;
  const int step = ReachEast() > 6 ? 5 : 1;
  for (int degree = static_cast<int>(std::ceil(centre_.longitude - ReachEast()));
       degree <= centre_.longitude + ReachEast(); ++degree) {
    if (degree % step != 0)
      continue;
    const double x = X(degree - centre_.longitude);
    drawing += Line(x, 0, x, side) + Label(x, side + 14, "middle", DegreeLabel(degree, 'E', 'W'));
  }
  const double north = std::min(90.0, centre_.latitude + reach);
  for (int degree = static_cast<int>(std::ceil(std::max(-90.0, centre_.latitude - reach))); degree <= north; ++degree) {
    const double y = Y(degree - centre_.latitude);
    drawing += Line(0, y, side, y) + Label(side + 4, y + 4, "start", DegreeLabel(degree, 'N', 'S'));
  }
  return drawing;
}

QByteArray Window::Neighbours(const Catalogue &catalogue) const {
  QByteArray drawing;
  std::size_t drawn = 0;
  for (const Event &other : catalogue.events()) {
    const double east = std::remainder(other.longitude - centre_.longitude, 360);
    const double north = other.latitude - centre_.latitude;
    if (std::abs(east) > ReachEast() || std::abs(north) > reach || other.id == centre_.id || drawn == most_neighbours)
      continue;
    drawing += Dot(X(east), Y(north), 1.5 + std::clamp(other.magnitude.value_or(0), 0.0, 8.0),
                   "fill=\"var(--quiet)\" fill-opacity=\".45\"");
    ++drawn;
  }
  return drawing;
}

double WorldX(double longitude) { return world_left + (longitude + 180) * world_scale; }

double WorldY(double latitude) { return (90 - latitude) * world_scale; }

/// The places of the catalogue's events on the globe, to the nearest unit. They draw the edges of the plates, in one
/// path, since they can be many.
QByteArray WorldEvents(const Catalogue &catalogue) {
  QSet<std::pair<int, int>> drawn;
  QByteArray path;
  for (const Event &event : catalogue.events()) {
    const std::pair place(static_cast<int>(std::lround(WorldX(event.longitude))),
                          static_cast<int>(std::lround(WorldY(event.latitude))));
    if (drawn.contains(place))
      continue;
    drawn.insert(place);
    path += 'M' + QByteArray::number(place.first) + ' ' + QByteArray::number(place.second) + "h.1";
    if (drawn.size() == most_world_places)
      break;
  }
  return "<path d=\"" + path + "\" stroke=\"var(--quiet)\" stroke-width=\"2\" stroke-linecap=\"round\"/>\n";
}

/// The globe's grid of 30 degrees with the event's place.
QByteArray World(const Event &event, const Catalogue &catalogue) {
  QByteArray drawing;
  for (int longitude = -180; longitude <= 180; longitude += 30)
    drawing += Line(WorldX(longitude), WorldY(90), WorldX(longitude), WorldY(-90));
  for (int latitude = -90; latitude <= 90; latitude += 30)
    drawing += Line(WorldX(-180), WorldY(latitude), WorldX(180), WorldY(latitude));
  for (const int longitude : {-120, 0, 120})
    drawing += Label(WorldX(longitude), WorldY(-90) + 14, "middle", DegreeLabel(longitude, 'E', 'W'));
  drawing += WorldEvents(catalogue);
  return drawing + Dot(WorldX(event.longitude), WorldY(event.latitude), 4, "fill=\"var(--quake)\"");
}

}  // namespace

QByteArray LocatorMap(const Event &event, const Catalogue &catalogue) {
  const Window window(event);
  const QByteArray where = LatitudeText(event.latitude) + ' ' + LongitudeText(event.longitude);
  QByteArray drawing =
      "<figure>\n<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-12 -4 672 344\" width=\"672\" height=\"344\" "
      "role=\"img\" aria-label=\"Map: the epicentre at " +
      where + "\">\n";
  drawing += window.Grid() + window.Neighbours(catalogue);
  drawing += "<rect x=\"0\" y=\"0\" width=\"320\" height=\"320\" fill=\"none\" stroke=\"var(--quiet)\"/>\n";
  drawing += Dot(side / 2, side / 2, 7, "fill=\"var(--quake)\"");
  drawing += Dot(side / 2, side / 2, 13, "fill=\"none\" stroke=\"var(--quake)\" stroke-width=\"2\"");
  drawing += World(event, catalogue);
  return drawing +
         "</svg>\n<figcaption>Left: two degrees around the epicentre, with the catalogue's other events in grey. "
         "Right: its place on the globe, with all of them.</figcaption>\n</figure>\n";
}

}  // namespace borvane::mirror
