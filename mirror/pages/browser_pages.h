#pragma once

#include <QByteArray>
#include <optional>

#include "catalogue/catalogue.h"
#include "common/hosts.h"
#include "pages/page_facts.h"

namespace borvane::mirror {

/// The magnitude from which an event shakes the ground strongly enough for the archive of strong motion.
inline constexpr double strong_motion_magnitude = 5;

/// The page at `path` that the monitor opens in the browser: the list of the world's events, the archive of strong
/// motion, or a form for felt reports. Each leads to the public page that is there today. Any host serves it, since
/// nothing else is at its path. Nothing for every other path.
std::optional<QByteArray> BrowserPage(const QByteArray &path, const Catalogue &catalogue, const PageFacts &facts = {});

/// Links to these pages on the host of whatever page they are on, as items of an HTML list.
QByteArray BrowserPageLinks();

}  // namespace borvane::mirror
