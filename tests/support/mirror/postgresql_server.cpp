#include "support/mirror/postgresql_server.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <csignal>
#include <memory>

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace borvane::mirror {

namespace {

constexpr int server_timeout_ms = 60'000;
constexpr const char *password = "p@ss:w/o%rd?#1";

/// Ends the shared server after the last test.
class SharedServer : public testing::Environment {
 public:
  void TearDown() override { server_.reset(); }

  PostgresqlServer &Running() {
    if (!server_)
      server_ = std::make_unique<PostgresqlServer>();
    server_->Start();
    return *server_;
  }

 private:
  std::unique_ptr<PostgresqlServer> server_;
};

// GoogleTest deletes it.
SharedServer *const shared_server = new SharedServer;
[[maybe_unused]] const testing::Environment *const registered = testing::AddGlobalTestEnvironment(shared_server);

/// The newest installed server's programs.
QString BinaryFolder() {
  const QString versions = "/usr/lib/postgresql";
  int newest = 0;
  for (const QString &version : QDir(versions).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
    newest = std::max(newest, version.toInt());
  return newest == 0 ? QString() : QString("%1/%2/bin/").arg(versions).arg(newest);
}

}  // namespace

PostgresqlServer::PostgresqlServer() {
  if (::geteuid() == 0) {
    account_ = ::getpwnam("postgres") != nullptr ? "postgres" : "nobody";
    const passwd *entry = ::getpwnam(account_.toLatin1().constData());
    EXPECT_EQ(::chown(qPrintable(folder_.path()), entry->pw_uid, entry->pw_gid), 0);
  }
  Run("initdb", {"--auth=trust", "--no-sync", "--username=test", "--encoding=UTF8", "--locale=C", "-D",
                 folder_.filePath("data")});
  // Users come with a password; the tests' own set-up goes through the socket file.
  QFile rights(folder_.filePath("data/pg_hba.conf"));
  EXPECT_TRUE(rights.open(QFile::WriteOnly | QFile::Truncate));
  rights.write("local all test trust\nhost all all 127.0.0.1/32 scram-sha-256\n");
  rights.close();
}

PostgresqlServer::~PostgresqlServer() {
  Thaw();
  Stop();
}

PostgresqlServer &PostgresqlServer::Shared() { return shared_server->Running(); }

StoreAddress PostgresqlServer::MakeDatabase() {
  const QString number = QString::number(++databases_);
  const StoreAddress address = {.host = "127.0.0.1",
                                .port = port_.Number(),
                                .user = "teacher " + number,
                                .password = password,
                                .database = "felt reports " + number};
  RunSql("postgres", QString("create role \"%1\" login password '%2';\ncreate database \"%3\" owner \"%1\";")
                         .arg(address.user, address.password, address.database));
  return address;
}

void PostgresqlServer::Start() {
  if (runs_)
    return;
  const QString options = QString("-h 127.0.0.1 -p %1 -k '%2' -c fsync=off").arg(port_.Number()).arg(folder_.path());
  Run("pg_ctl", {"-s", "-w", "-D", folder_.filePath("data"), "-l", folder_.filePath("log"), "-o", options, "start"});
  runs_ = true;
}

void PostgresqlServer::Stop() {
  if (runs_)
    Run("pg_ctl", {"-s", "-w", "-D", folder_.filePath("data"), "-m", "immediate", "stop"});
  runs_ = false;
}

void PostgresqlServer::Freeze() { SignalAll(SIGSTOP); }

void PostgresqlServer::Thaw() { SignalAll(SIGCONT); }

void PostgresqlServer::Execute(const StoreAddress &database, const QString &sql) {
  RunSql(database.database, QString("set role \"%1\";\nset search_path = borvane, public;\n").arg(database.user) + sql);
}

void PostgresqlServer::EndConnections(const StoreAddress &database) {
  RunSql("postgres", QString("select pg_terminate_backend(pid, 5000) from pg_stat_activity where datname = '%1';")
                         .arg(database.database));
}

void PostgresqlServer::RunSql(const QString &database, const QString &sql) {
  Run("psql",
      {"-q", "-v", "ON_ERROR_STOP=1", "-h", folder_.path(), "-p", QString::number(port_.Number()), "-U", "test",
       database},
      sql.toUtf8());
}

void PostgresqlServer::Run(const QString &program, const QStringList &arguments, const QByteArray &input) {
  const QString path = BinaryFolder() + program;
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  // The server that pg_ctl starts keeps what it inherits, so that a pipe would never end.
  process.setStandardOutputFile(folder_.filePath("output"));
  process.setWorkingDirectory(folder_.path());
  if (account_.isEmpty())
    process.start(path, arguments);
  else
    process.start("runuser", QStringList{"-u", account_, "--", path} + arguments);
  process.write(input);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(server_timeout_ms))
      << qPrintable(program) << ": " << qPrintable(process.errorString());
  EXPECT_EQ(process.exitCode(), 0) << qPrintable(program) << ": " << Text("output").constData()
                                   << "\nThe server's log:\n"
                                   << Text("log").right(2'000).constData();
}

QByteArray PostgresqlServer::Text(const QString &name) const {
  QFile file(folder_.filePath(name));
  return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void PostgresqlServer::SignalAll(int signal) {
  QFile file(folder_.filePath("data/postmaster.pid"));
  if (!runs_ || !file.open(QFile::ReadOnly))
    return;
  const pid_t server = file.readLine().trimmed().toInt();
  EXPECT_GT(server, 0);
  // Its children are one for each connection, and some that do its housework.
  QFile children(QString("/proc/%1/task/%1/children").arg(server));
  EXPECT_TRUE(children.open(QFile::ReadOnly));
  for (const QByteArray &child : children.readAll().simplified().split(' '))
    ::kill(child.toInt(), signal);
  ::kill(server, signal);
}

}  // namespace borvane::mirror
