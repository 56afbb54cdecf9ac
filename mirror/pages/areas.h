#pragma once

#include <QByteArray>
#include <QString>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "catalogue/event.h"
#include "common/hosts.h"

namespace borvane::mirror {

/// Where the pages are that two numbers name, and most pages of named areas.
inline constexpr QByteArrayView map_folder = "/recenteqs/Maps/";

/// Whether a list page is at the path on one of the hosts that the mirror plays.
bool IsListPath(const QByteArray &path);

/// A part of the Earth's surface between two parallels and two meridians, in degrees; the edges belong to it. Where
/// west is greater than east, it lies across the date line.
struct Box {
  double south;
  double north;
  double west;
  double east;

  bool operator==(const Box &) const = default;

  bool Contains(double latitude, double longitude) const {
    const bool is_between =
        west <= east ? longitude >= west && longitude <= east : longitude >= west || longitude <= east;
    return latitude >= south && latitude <= north && is_between;
  }
};

/// The forms in which the networks wrote their lists, each for a scanner of its own.
enum class ListForm { Quakes, MapList, MapAnchor, World, Region };

/// A page of the events within one named area.
struct Area {
  const char *name = "";
  Endpoint endpoint = {};
  const char *path = "";
  ListForm form = {};
  Box box = {};
  double least_magnitude = std::numeric_limits<double>::lowest();

  /// Whether the page lists the event. None without a magnitude is on a list page.
  bool Holds(const Event &event) const {
    return event.magnitude && *event.magnitude >= least_magnitude && box.Contains(event.latitude, event.longitude);
  }
};

/// All named areas, in the order in which the monitor lists them.
std::span<const Area> Areas();

/// A box that takes the place of that of the area with the name.
struct NamedBox {
  QString name;
  Box box;

  bool operator==(const NamedBox &) const = default;
};

/// All named areas with those boxes in place of their own.
std::vector<Area> AreasWith(const std::vector<NamedBox> &boxes);

/// The area of `areas` at `path` of the endpoint; when that is not known, the one area that has the path. Null when
/// there is none.
const Area *FindArea(const QByteArray &path, std::optional<Endpoint> endpoint, std::span<const Area> areas = Areas());

}  // namespace borvane::mirror
