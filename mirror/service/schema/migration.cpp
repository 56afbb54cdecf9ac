#include "service/schema/migration.h"

#include <QFile>

namespace borvane::mirror {

namespace {

/// The version of the tables that are there; 0 when there are none.
int SchemaVersion(Database &database) {
  const bool is_file = database.address().IsFile();
  const QVariantList found = database.Row(
      is_file ? "select count(*), count(case when name = 'version' then 1 end) from sqlite_master"
              : "select count(*), count(case when table_name = 'version' then 1 end) from information_schema.tables "
                "where table_schema = 'borvane'");
  if (found.at(0).toInt() == 0)
    return 0;
  const QVariantList version =
      found.at(1).toInt() == 0 ? QVariantList() : database.Row("select number from version limit 1");
  if (version.isEmpty())
    throw StoreFailure("it holds tables that are not the service's");
  return version.at(0).toInt();
}

void RequireKnown(int version) {
  if (version > newest_schema)
    throw StoreFailure(QString("it was made by a newer borvane-mirror (version %1 of its tables; this one knows %2)")
                           .arg(version)
                           .arg(newest_schema));
}

QStringList Statements(bool is_file, int version) {
  QFile file(QString(":/service/schema/%1_%2.sql").arg(is_file ? "sqlite" : "postgresql").arg(version));
  if (!file.open(QFile::ReadOnly))
    qFatal("%s is missing", qPrintable(file.fileName()));
  QStringList statements = QString::fromUtf8(file.readAll()).split(";\n");
  statements.removeLast();
  return statements;
}

}  // namespace

void BringUpToDate(Database &database) {
  const int found = SchemaVersion(database);
  RequireKnown(found);
  // Not before it is known to be the service's own.
  database.UseLog();
  if (found == newest_schema)
    return;

  // Another mirror may be at the same work; the later one finds it done.
  database.Begin();
  const bool is_file = database.address().IsFile();
  if (!is_file && database.Row("select to_regnamespace('borvane') is null").at(0).toBool())
    database.Run("create schema borvane");
  const int locked = SchemaVersion(database);
  RequireKnown(locked);
  for (int version = locked + 1; version <= newest_schema; ++version) {
    for (const QString &statement : Statements(is_file, version))
      database.Run(statement);
    database.Run("update version set number = ?", {version});
  }
  database.Commit();
}

void RequireUpToDate(Database &database) {
  const int found = SchemaVersion(database);
  RequireKnown(found);
  if (found != newest_schema)
    throw StoreFailure("an older borvane-mirror made it, and it cannot be brought up to date");
}

}  // namespace borvane::mirror
