#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"

namespace borvane::mirror {

/// The page of all pages, with a link to each area's, and with the sources of the events. `port` is the one that the
/// mirror listens at.
QByteArray IndexPage(const Catalogue &catalogue, const PageFacts &facts, quint16 port);

}  // namespace borvane::mirror
