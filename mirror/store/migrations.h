#pragma once

#include "store/database.h"

namespace borvane::mirror {

/// The tables of a store. `folder` holds the files `sqlite_N.sql` and `postgresql_N.sql`, each with the statements that
/// lead from version N - 1 to version N. The first ones make a table `version` with one row, the number.
struct Schema {
  const char *folder;  ///< among the program's resources
  int newest;          ///< the version that this program reads and writes
};

/// Creates the tables in an empty database and migrates those of an older version, all or nothing. Refuses, by a
/// StoreFailure, tables of a newer version and a database that holds something else.
void MigrateToNewest(Database &database, const Schema &schema);

/// Refuses, by a StoreFailure, anything but tables of the newest version.
void RequireNewest(Database &database, const Schema &schema);

}  // namespace borvane::mirror
