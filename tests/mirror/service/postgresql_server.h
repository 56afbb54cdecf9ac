#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "service/store_address.h"

namespace borvane::mirror {

/// A PostgreSQL server of the tests' own: an own data folder, an own free port of the loopback address. It ends with
/// this object. What cannot be done fails the test.
class PostgresqlServer {
 public:
  PostgresqlServer();
  ~PostgresqlServer();

  /// The server that the tests of this process share; started for the first one, running for each.
  static PostgresqlServer &Shared();

  /// Makes an empty database and its owner; gives where it is, with the owner's password.
  StoreAddress MakeDatabase();

  void Start();

  /// Ends it as a computer that is switched off would: without a word to anyone.
  void Stop();

  /// Holds the processes of the server still, so that connections stand and nothing answers; and lets them go on.
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

  QTemporaryDir folder_;
  QString account_;  ///< who runs the server, since root must not; empty for this user
  int port_ = 0;
  int databases_ = 0;
  bool runs_ = false;
};

}  // namespace borvane::mirror
