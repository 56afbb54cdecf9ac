#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"
#include "pages/page_host.h"

namespace borvane::mirror {

/// The page about one event of the catalogue: its figures, in the form in which the monitor reads three of them, a map
/// of where it was and of its neighbours in the catalogue, and links to the lists that hold it and have an address
/// beside the host that the page is on.
QByteArray EventPage(const Event &event, const Catalogue &catalogue, const PageHost &host, const PageFacts &facts = {});

}  // namespace borvane::mirror
