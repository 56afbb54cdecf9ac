#include "support/mirror/databases.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include "store/database.h"
#include "support/mirror/postgresql_server.h"

namespace borvane::mirror {

QString CommandLineText(const StoreAddress &address) {
  if (address.IsFile())
    return address.file;
  const auto encoded = [](const QString &text) { return QString::fromLatin1(QUrl::toPercentEncoding(text)); };
  return "postgresql://" + encoded(address.user) + ':' + encoded(address.password) + '@' + address.host + ':' +
         QString::number(address.port) + '/' + encoded(address.database);
}

EmptyDatabase::EmptyDatabase(DatabaseKind kind)
    : address_(kind == DatabaseKind::SQLite ? StoreAddress{.file = folder_.filePath("data/service.sqlite")}
                                            : PostgresqlServer::Shared().MakeDatabase()) {}

void EmptyDatabase::Execute(const QString &sql) const {
  if (!address_.IsFile()) {
    PostgresqlServer::Shared().Execute(address_, sql);
    return;
  }
  QDir().mkpath(QFileInfo(address_.file).path());
  Database database(address_);
  database.Open();
  for (const QString &statement : sql.split(";\n", Qt::SkipEmptyParts))
    if (!statement.trimmed().isEmpty())
      database.Run(statement);
}

}  // namespace borvane::mirror
