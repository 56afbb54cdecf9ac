#include "store/database.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "support/mirror/databases.h"
#include "support/mirror/service_under_test.h"

namespace borvane::mirror {
namespace {

TEST(Database, SaysThatChangesMayBeKeptWhenOnlyTheirEndFailed) {
  const EmptyDatabase empty(DatabaseKind::SQLite);
  Database database(empty.Address());
  database.Open();
  try {
    database.Commit();
    ADD_FAILURE() << "there is nothing to be committed";
  } catch (const StoreFailure &failure) {
    EXPECT_TRUE(failure.MayBeKept());
  }
  try {
    database.Run("insert into nothing values (1)");
    ADD_FAILURE() << "there is no such table";
  } catch (const StoreFailure &failure) {
    EXPECT_FALSE(failure.MayBeKept());
  }
}

TEST(Database, KeepsALogBesideItsFile) {
  const EmptyDatabase empty(DatabaseKind::SQLite);
  ServiceUnderTest service(empty.Address());
  EXPECT_EQ(service.Ask("puta&map=A&strout=x"), "ok");
  Database database(empty.Address());
  database.Open();
  EXPECT_EQ(database.Row("pragma journal_mode").at(0).toString(), "wal") << "a reader never waits for a writer";
  EXPECT_EQ(database.Row("pragma synchronous").at(0).toInt(), 2) << "a commit is on the disk";
}

TEST(DatabaseOnPostgreSQL, CommitsToTheDiskWhateverTheServerIsSetTo) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  empty.Execute("set role none; alter database \"" + empty.Address().database + "\" set synchronous_commit = off;\n");
  Database database(empty.Address());
  database.Open();
  EXPECT_EQ(database.Row("show synchronous_commit").at(0).toString(), "on");
  EXPECT_EQ(database.Row("show statement_timeout").at(0).toString(), "5s");
}

TEST(DatabaseOnPostgreSQL, TakesThePortThatThePostgresqlLibraryTakes) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  StoreAddress address = empty.Address();
  qputenv("PGPORT", QByteArray::number(address.port));
  address.port = -1;
  Database database(address);
  EXPECT_NO_THROW(database.Open());
  qunsetenv("PGPORT");
}

/// The number that an option of the connection to the port has, in this process.
int SocketOption(int port, int level, int option) {
  for (int descriptor = 0; descriptor < 1'024; ++descriptor) {
    sockaddr_in peer = {};
    socklen_t size = sizeof peer;
    if (::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &size) != 0 || ntohs(peer.sin_port) != port)
      continue;
    int value = -1;
    socklen_t value_size = sizeof value;
    EXPECT_EQ(::getsockopt(descriptor, level, option, &value, &value_size), 0);
    return value;
  }
  ADD_FAILURE() << "there is no such connection";
  return -1;
}

TEST(DatabaseOnPostgreSQL, AsksTheServersHostWhetherItIsThereStill) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  Database database(empty.Address());
  database.Open();
  const int port = empty.Address().port;
  EXPECT_EQ(SocketOption(port, SOL_SOCKET, SO_KEEPALIVE), 1);
  const int seconds = SocketOption(port, IPPROTO_TCP, TCP_KEEPIDLE) +
                      SocketOption(port, IPPROTO_TCP, TCP_KEEPINTVL) * SocketOption(port, IPPROTO_TCP, TCP_KEEPCNT);
  EXPECT_LE(seconds, 10) << "as long as a job may take";
}

}  // namespace
}  // namespace borvane::mirror
