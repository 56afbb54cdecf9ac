#pragma once

#include <QByteArray>
#include <QString>

namespace borvane::mirror {

/// The page about Borvane, for people. `online` is the number of users, in digits; empty when it is not known.
QByteArray ProductPage(const QString &newest_version, const QByteArray &online);

/// The page of all products, for people.
QByteArray ProductsPage();

}  // namespace borvane::mirror
