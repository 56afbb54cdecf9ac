#include <QDir>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QSet>
#include <QThread>
#include <atomic>
#include <mutex>
#include <thread>

#include "common/attendance.h"
#include "support/mirror/databases.h"
#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/postgresql_server.h"

// Whether reports survive when a process dies in the middle of them.

namespace borvane::mirror {
namespace {

const QByteArray script = "/cgi-bin/borvane/control.pl";

/// Clients that send reports, each with a number of its own, from many addresses.
class Reporters {
 public:
  /// Sends `count` reports, in `threads` connections at a time, until all are sent or the connections break.
  Reporters(quint16 port, int count, int threads) {
    for (int i = 0; i < threads; ++i)
      threads_.emplace_back([this, port, count] {
        for (int number = next_++; number < count; number = next_++)
          SendOne(port, number);
      });
  }
  ~Reporters() { Wait(); }

  void Wait() {
    for (std::thread &thread : threads_)
      if (thread.joinable())
        thread.join();
  }

  /// Waits until so many were answered "ok"; false when that does not happen.
  bool WaitForAnswers(int count) const {
    QElapsedTimer clock;
    clock.start();
    while (answered_ < count && clock.elapsed() < 60'000)
      QThread::msleep(1);
    return answered_ >= count;
  }

  /// The numbers of the reports that were answered "ok".
  const QSet<QByteArray> &Ok() const { return ok_; }

 private:
  void SendOne(quint16 port, int number) {
    // Thirty reports a minute from one address.
    const QHostAddress from(QString("127.0.1.%1").arg(1 + number / 30));
    Client client(port, QHostAddress::LocalHost, from);
    const QByteArray text = QByteArray::number(number);
    client.Send("GET " + script + "?cmd=puta&map=A&strout=" + text + " HTTP/1.1\r\n\r\n");
    const std::optional<Response> response = client.Read();
    if (!response || response->body != "ok")
      return;
    ++answered_;
    const std::lock_guard lock(mutex_);
    ok_.insert(text);
  }

  std::atomic<int> next_ = 0;
  std::atomic<int> answered_ = 0;
  std::mutex mutex_;
  QSet<QByteArray> ok_;
  std::vector<std::thread> threads_;
};

QByteArrayList ReportsKept(const QString &store) {
  MirrorProcess mirror({"--store", store});
  QByteArrayList reports = AskMaker(mirror.Port(), "geta&map=A").value().body.split('\n');
  reports.removeLast();
  return reports;
}

class SurvivalOnEveryDatabase : public OnEveryDatabase {};
INSTANTIATE_TEST_SUITE_P(Survival, SurvivalOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(SurvivalOnEveryDatabase, OfEveryReportThatWasAnsweredOkWhenTheServiceIsKilled) {
  auto mirror = std::make_unique<MirrorProcess>(QStringList{"--store", database_.AddressText()});
  Reporters reporters(mirror->Port(), 5'000, 8);
  EXPECT_TRUE(reporters.WaitForAnswers(400));
  mirror.reset();
  reporters.Wait();
  EXPECT_LT(reporters.Ok().size(), 5'000) << "it was killed too late";

  const QByteArrayList kept = ReportsKept(database_.AddressText());
  EXPECT_EQ(QSet<QByteArray>(kept.begin(), kept.end()).size(), kept.size()) << "a report is kept twice";
  for (const QByteArray &number : reporters.Ok())
    EXPECT_TRUE(kept.contains(number)) << number.constData();
}

TEST_P(SurvivalOnEveryDatabase, OfAThousandReportsAtOnce) {
  MirrorProcess mirror({"--store", database_.AddressText()});
  Reporters reporters(mirror.Port(), 1'000, 16);
  reporters.Wait();
  EXPECT_EQ(reporters.Ok().size(), 1'000);
  EXPECT_EQ(ReportsKept(database_.AddressText()).size(), 1'000);
  EXPECT_EQ(mirror.Errors(), "");
}

/// A mirror on a PostgreSQL server that comes and goes.
class PostgreSQLTest : public testing::Test {
 protected:
  QByteArray Ask(const QByteArray &command) {
    const std::optional<Response> response = AskMaker(mirror_.Port(), command);
    return response ? response->body : "no answer";
  }

  /// One address may send 30 reports a minute, so that it must not ask too often.
  QByteArray AskUntilItWorks(const QByteArray &command) {
    QByteArray answer = Ask(command);
    for (int i = 0; i < 20 && answer.contains("503"); ++i) {
      QThread::sleep(1);
      answer = Ask(command);
    }
    return answer;
  }

  /// That pages do not wait for the store, which may take ten seconds.
  void ExpectPages() {
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(GetFromMaker(mirror_.Port(), "/borvane/version.txt").value().body, "235");
    EXPECT_EQ(Get(mirror_.Port(), "/recenteqs/Maps/Los_Angeles.html").value().status, 200);
    EXPECT_LT(clock.elapsed(), 9'000);
    EXPECT_EQ(GetFromMaker(mirror_.Port(), "/borvane/").value().status, 200);
    EXPECT_LT(clock.elapsed(), 9'000);
  }

  PostgresqlServer &server_ = PostgresqlServer::Shared();
  const StoreAddress address_ = server_.MakeDatabase();
  const QString store_ = CommandLineText(address_);
  MirrorProcess mirror_{{"--store", store_}};
};

TEST_F(PostgreSQLTest, MayGoAwayAndComeBack) {
  EXPECT_EQ(Ask("puta&map=A&strout=before"), "ok");
  server_.Stop();
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(Ask("puta&map=A&strout=meanwhile").contains("503"));
    EXPECT_TRUE(Ask("geta&map=A").contains("503"));
    ExpectPages();
  }
  server_.Start();
  EXPECT_EQ(AskUntilItWorks("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(Ask("geta&map=A"), "before\nafter\n");

  EXPECT_TRUE(mirror_.LogsWithin("works again\n", 30'000));
  const QByteArrayList lines = mirror_.Errors().trimmed().split('\n');
  ASSERT_EQ(lines.size(), 2) << mirror_.Errors().constData();
  EXPECT_TRUE(lines[0].startsWith("borvane-mirror: the service's store postgresql://teacher ")) << lines[0].data();
  EXPECT_FALSE(lines[0].contains("p@ss") || lines[0].contains("p%40ss")) << lines[0].constData();
}

TEST_F(PostgreSQLTest, MayBeRestartedWithoutAnyoneNoticing) {
  EXPECT_EQ(Ask("puta&map=A&strout=before"), "ok");
  server_.Stop();
  server_.Start();
  EXPECT_EQ(Ask("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(Ask("geta&map=A"), "before\nafter\n");
  EXPECT_EQ(mirror_.Errors(), "");
}

TEST_F(PostgreSQLTest, MayBeThereLaterThanTheMirror) {
  server_.Stop();
  EXPECT_TRUE(Ask("geta&map=A").contains("503"));
  server_.Start();
  EXPECT_EQ(AskUntilItWorks("puta&map=A&strout=x"), "ok");
}

TEST_F(PostgreSQLTest, MayBeFrozenForAWhile) {
  EXPECT_EQ(Ask("puta&map=A&strout=before"), "ok");
  server_.Freeze();
  Client waiting(mirror_.Port());
  waiting.Send("GET " + script + "?cmd=puta&map=A&strout=meanwhile HTTP/1.1\r\n\r\n");
  for (int i = 0; i < 10; ++i) {
    ExpectPages();
    QThread::msleep(100);
  }
  EXPECT_EQ(waiting.Read().value().status, 503);
  EXPECT_TRUE(Ask("geta&map=A").contains("503"));
  ExpectPages();
  server_.Thaw();
  EXPECT_EQ(AskUntilItWorks("puta&map=A&strout=after"), "ok");
  const QByteArray reports = Ask("geta&map=A");
  EXPECT_TRUE(reports == "before\nafter\n" || reports == "before\nmeanwhile\nafter\n") << reports.constData();
  EXPECT_TRUE(mirror_.LogsWithin("works again\n", 30'000));
  EXPECT_TRUE(mirror_.Errors().contains("it does not answer\n")) << mirror_.Errors().constData();
}

TEST_F(PostgreSQLTest, HasEveryReportThatWasAnsweredOkWhenItIsStoppedInTheirMiddle) {
  Reporters reporters(mirror_.Port(), 1'000, 8);
  EXPECT_TRUE(reporters.WaitForAnswers(300));
  server_.Stop();
  server_.Start();
  reporters.Wait();
  EXPECT_EQ(AskUntilItWorks("add&macid=1"), "ok");
  const QByteArrayList kept = Ask("geta&map=A").split('\n');
  for (const QByteArray &number : reporters.Ok())
    EXPECT_TRUE(kept.contains(number)) << number.constData();
}

TEST_F(PostgreSQLTest, IsSharedByTwoMirrors) {
  MirrorProcess other({"--store", store_});
  EXPECT_EQ(Ask("puta&map=A&strout=from one"), "ok");
  EXPECT_EQ(AskMaker(other.Port(), "puta&map=A&strout=from the other").value().body, "ok");
  EXPECT_EQ(Ask("geta&map=A"), "from one\nfrom the other\n");
  EXPECT_EQ(Ask("whoson&macid=1&AppVersion= 235"), "1");
  EXPECT_EQ(AskMaker(other.Port(), "whoson&macid=2&AppVersion= 235").value().body, "2");
}

TEST_F(PostgreSQLTest, MayBeReadOnlyForAWhile) {
  const auto let_write = [this](const char *off_or_on) {
    const QString database =
        QString("alter database \"%1\" set default_transaction_read_only = ").arg(address_.database);
    server_.Execute(address_, "set default_transaction_read_only = off;\n" + database + off_or_on + ";\n");
  };
  EXPECT_EQ(Ask("puta&map=A&strout=before"), "ok");
  let_write("on");
  server_.EndConnections(address_);
  EXPECT_TRUE(Ask("puta&map=A&strout=meanwhile").contains("503"));
  EXPECT_EQ(Ask("geta&map=A"), "before\n");
  ExpectPages();
  EXPECT_TRUE(mirror_.LogsWithin("does not work: ERROR: cannot execute INSERT in a read-only transaction\n", 30'000))
      << mirror_.Errors().constData();
  let_write("off");
  EXPECT_EQ(AskUntilItWorks("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(Ask("geta&map=A"), "before\nafter\n");
}

TEST_F(PostgreSQLTest, MayBeFullForAWhile) {
  EXPECT_EQ(Ask("puta&map=A&strout=before"), "ok");
  server_.Execute(address_,
                  "create function fill() returns trigger language plpgsql as $$ begin raise exception using errcode = "
                  "'disk_full', message = 'could not extend file'; end $$;\n"
                  "create trigger full_disk before insert on report execute function fill();\n");
  EXPECT_TRUE(Ask("puta&map=A&strout=meanwhile").contains("503"));
  EXPECT_EQ(Ask("geta&map=A"), "before\n");
  ExpectPages();
  EXPECT_TRUE(mirror_.LogsWithin("could not extend file\n", 30'000)) << mirror_.Errors().constData();
  server_.Execute(address_, "drop trigger full_disk on report;\n");
  EXPECT_EQ(AskUntilItWorks("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(Ask("geta&map=A"), "before\nafter\n");
}

TEST_F(PostgreSQLTest, MayBeFrozenWhenTheMirrorEnds) {
  // This library reports when the program takes down what its thread may still use.
  MirrorProcess mirror({"--attended", QDir::tempPath(), "--store", store_},
                       {.variables = {"LD_LIBRARY_PATH=" BORVANE_DISK_FAULTS_FOLDER, "LD_PRELOAD=" BORVANE_DISK_FAULTS,
                                      "ASAN_OPTIONS=verify_asan_link_order=0"}});
  QLocalSocket monitor;
  monitor.connectToServer(QString::fromStdString(AttendanceSocket(QDir::tempPath().toStdString(), mirror.Port())));
  EXPECT_TRUE(monitor.waitForConnected(30'000));
  EXPECT_TRUE(mirror.MemoryMap().contains("disk_faults"));
  EXPECT_EQ(AskMaker(mirror.Port(), "puta&map=A&strout=before").value().body, "ok");
  server_.Freeze();
  Client waiting(mirror.Port());
  waiting.Send("GET " + script + "?cmd=puta&map=A&strout=meanwhile HTTP/1.1\r\n\r\n");
  QThread::msleep(200);
  monitor.abort();
  EXPECT_EQ(mirror.StatusWithin(30'000), 0);
  server_.Thaw();
  EXPECT_FALSE(mirror.LogsWithin("taken down\n", 100));
}

TEST_F(PostgreSQLTest, RefusesAWrongPassword) {
  QString address = store_;
  address.replace("p%40ss", "wrong");
  MirrorProcess mirror({"--store", address});
  EXPECT_EQ(AskMaker(mirror.Port(), "geta&map=A").value().status, 503);
  EXPECT_TRUE(mirror.LogsWithin("password authentication failed", 30'000)) << mirror.Errors().constData();
  EXPECT_FALSE(mirror.Errors().contains("wrong"));
}

}  // namespace
}  // namespace borvane::mirror
