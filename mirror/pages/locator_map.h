#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"

namespace borvane::mirror {

/// A drawing (SVG, for the inside of a page) of where an event was: two degrees around it with the grid of degrees and
/// the other events of the catalogue, and the globe's grid with the event and all others.
QByteArray LocatorMap(const Event &event, const Catalogue &catalogue);

}  // namespace borvane::mirror
