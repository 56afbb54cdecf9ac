#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"

namespace borvane::mirror {

/// The page about one event of the catalogue: its figures, in the form in which the monitor reads three of them, a map
/// of where it was and of its neighbours in the catalogue, and links to the lists that hold it. `port` is the one that
/// the mirror listens at.
QByteArray EventPage(const Event &event, const Catalogue &catalogue, quint16 port, const PageFacts &facts = {});

}  // namespace borvane::mirror
