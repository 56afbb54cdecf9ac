#pragma once

#include "service/database.h"

namespace borvane::mirror {

/// The version of the tables that this program reads and writes. Each has a file with the steps that lead to it from
/// the one before, for either kind of database.
constexpr int newest_schema = 2;

/// Makes the tables in an empty database and brings those of an older version up to date, all or nothing. Refuses, by a
/// StoreFailure, tables of a newer version and a database that holds something else.
void BringUpToDate(Database &database);

/// Refuses, by a StoreFailure, anything but tables of the newest version.
void RequireUpToDate(Database &database);

}  // namespace borvane::mirror
