#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"
#include "pages/page_host.h"

namespace borvane::mirror {

/// The page of all pages, on that host, with a link to each area's that has an address there, and with the sources of
/// the events.
QByteArray IndexPage(const Catalogue &catalogue, const PageFacts &facts, const PageHost &host);

}  // namespace borvane::mirror
