#pragma once

#include <QByteArray>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"

namespace borvane::mirror {

/// The list page of an area, in the form that the monitor's scanner of that area reads. `host` is the one that the page
/// is on, a plain one (see IsPlainHost), for the links that name it.
QByteArray AreaPage(const Area &area, const Catalogue &catalogue, const QByteArray &host, const PageFacts &facts = {});

}  // namespace borvane::mirror
