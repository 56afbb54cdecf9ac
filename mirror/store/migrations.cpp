#include "store/migrations.h"

#include <QFile>

namespace borvane::mirror {

namespace {

/// The version of the tables in the database; 0 when there are none.
int CurrentVersion(Database &database) {
  const StoreAddress &address = database.address();
  const QString statement = "select count(*), count(case when %1 = 'version' then 1 end) from %2";
  const QVariantList tables = database.Row(
      address.IsFile()
          ? statement.arg("name", "sqlite_master")
          : statement.arg("table_name", "information_schema.tables where table_schema = '" + address.schema + "'"));
  if (tables.at(0).toInt() == 0)
    return 0;
  const QVariantList version =
      tables.at(1).toInt() == 0 ? QVariantList() : database.Row("select number from version limit 1");
  if (version.isEmpty())
    throw StoreFailure("it holds the tables of another program");
  return version.at(0).toInt();
}

void RequireKnown(int version, const Schema &schema) {
  if (version > schema.newest)
    throw StoreFailure(QString("it was created by a newer borvane-mirror (version %1 of its tables; this one knows %2)")
                           .arg(version)
                           .arg(schema.newest));
}

QStringList Statements(const Schema &schema, bool is_file, int version) {
  QFile file(QString("%1/%2_%3.sql").arg(schema.folder, is_file ? "sqlite" : "postgresql").arg(version));
  if (!file.open(QFile::ReadOnly))
    qFatal("%s is missing", qPrintable(file.fileName()));
  QStringList statements = QString::fromUtf8(file.readAll()).split(";\n");
  statements.removeLast();
  return statements;
}

}  // namespace

void MigrateToNewest(Database &database, const Schema &schema) {
  const int found = CurrentVersion(database);
  RequireKnown(found, schema);
  // Not earlier: another program's file stays as it is.
  database.UseLog();
  if (found == schema.newest)
    return;

  // Another mirror may be migrating the same store; whoever comes second finds it done.
  database.Begin();
  const bool is_file = database.address().IsFile();
  const QString schema_name = database.address().schema;
  if (!is_file && database.Row("select to_regnamespace('" + schema_name + "') is null").at(0).toBool())
    database.Run("create schema " + schema_name);
  const int locked = CurrentVersion(database);
  RequireKnown(locked, schema);
  for (int version = locked + 1; version <= schema.newest; ++version) {
    for (const QString &statement : Statements(schema, is_file, version))
      database.Run(statement);
    database.Run("update version set number = ?", {version});
  }
  database.Commit();
}

void RequireNewest(Database &database, const Schema &schema) {
  const int found = CurrentVersion(database);
  RequireKnown(found, schema);
  if (found != schema.newest)
    throw StoreFailure("an older borvane-mirror created it, and it cannot be migrated without write access");
}

}  // namespace borvane::mirror
