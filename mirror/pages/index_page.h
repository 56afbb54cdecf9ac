#pragma once

#include <QByteArray>
#include <QString>

#include "catalogue/catalogue.h"

namespace borvane::mirror {

/// The page of all pages, with a link to each area's. `source` says where the events come from, `port` is the one that
/// the mirror listens at.
QByteArray IndexPage(const Catalogue &catalogue, const QString &source, quint16 port);

}  // namespace borvane::mirror
