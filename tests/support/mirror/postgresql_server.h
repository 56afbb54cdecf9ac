#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "store/store_address.h"
#include "support/reserved_port.h"

namespace borvane::mirror {

/// A PostgreSQL server of the tests' own: an own data folder, an own port of the loopback address. It ends with
/// this object. What cannot be done fails the test.
class PostgresqlServer {
 public:
  PostgresqlServer();
  ~PostgresqlServer();

  /// The server that the tests of this process share; it is started for the first test and runs for each.
  static PostgresqlServer &Shared();

  /// Creates an empty database and its owner; returns its address, with the owner's password.
  StoreAddress MakeDatabase();

  void Start();

  /// Ends it as a computer that is switched off would: without notice.
  void Stop();

  /// Stops the processes of the server, so that connections stay open and nothing answers; and continues them.
  void Freeze();
  void Thaw();

  /// Ends all connections to the database.
  void EndConnections(const StoreAddress &database);

  /// Executes SQL in the database, as its owner.
  void Execute(const StoreAddress &database, const QString &sql);

 private:
  void RunSql(const QString &database, const QString &sql);
  void Run(const QString &program, const QStringList &arguments, const QByteArray &input = {});
  void SignalAll(int signal);
  /// What the file of the folder has.
  QByteArray Text(const QString &name) const;

  QTemporaryDir folder_;
  QString account_;  ///< who runs the server, since root must not; empty for this user
  ReservedPort port_;
  int databases_ = 0;
  bool runs_ = false;
};

}  // namespace borvane::mirror
