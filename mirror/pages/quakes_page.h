#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "catalogue/catalogue.h"

namespace borvane::mirror {

/// Chooses the events of a page.
using EventTest = std::function<bool(const Event &)>;

/// The list page of the regional networks: a row an event, newest first, in the form that the monitor's quakes list
/// scanner reads. Events without a magnitude are left out, since a row has no place for them.
QByteArray QuakesPage(const QString &title, const Catalogue &catalogue, const EventTest &belongs);

}  // namespace borvane::mirror
