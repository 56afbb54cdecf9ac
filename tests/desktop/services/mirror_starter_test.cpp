#include "desktop/services/mirror_starter.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <chrono>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "common/attendance.h"
#include "support/desktop/scripted_server.h"
#include "support/desktop/timeout.h"
#include "support/reserved_port.h"

namespace borvane {
namespace {

using namespace std::chrono_literals;

constexpr int a_moment = 200;  // milliseconds

const std::string mirror_answer =
    "HTTP/1.1 200 OK\r\nServer: borvane-mirror/2.3.5\r\nBorvane-Pages: 1\r\nContent-Length: 0\r\n\r\n";

/// Takes the port over and answers there as a mirror does.
std::unique_ptr<QTcpServer> ServeAsMirror(quint16 port) {
  auto server = std::make_unique<QTcpServer>();
  EXPECT_TRUE(server->listen(QHostAddress::LocalHost, port));
  QObject::connect(server.get(), &QTcpServer::newConnection, server.get(), [server = server.get()] {
    QTcpSocket *connection = server->nextPendingConnection();
    Writes(mirror_answer)(*connection, {});
  });
  return server;
}

class MirrorStarterTest : public testing::Test {
 protected:
  QString PathOf(const QString &name) const { return folder_.filePath(name); }

  /// Writes a shell script that is started in place of the mirror. It notes its arguments first.
  void WriteMirror(const QByteArray &script = {}) {
    QFile file(PathOf("mirror"));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("#!/bin/sh\ncd '" + QFile::encodeName(folder_.path()) + "'\necho \"$@\" >> starts\n" + script);
    file.close();
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }

  QByteArray Text(const QString &name) const {
    QFile file(PathOf(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }

  qsizetype Starts() const { return Text("starts").count('\n'); }

  /// Lets a starter look at the port from now on.
  void LookAt(quint16 port, MirrorTimes times = {}) {
    starter_.emplace(
        MirrorPlace{.port = port, .executable = PathOf("mirror"), .socket_folder = folder_.path()},
        [this](const QString &line) { log_ += line; }, times);
    starter_->Start();
  }

  QString ProgramAt(quint16 port) const {
    return QString("no data source: the program that listens at 127.0.0.1:%1 ").arg(port);
  }

  /// A port at which nothing listens, but for the mirror that a test puts there.
  quint16 port() const { return port_.Number(); }

  const QStringList &log() const { return log_; }

  bool LogsWithin(const QString &line) {
    return QTest::qWaitFor([&] { return log_.contains(line); }, timeout);
  }

  /// The server at which a mirror at that port counts its monitors.
  void CountMonitors(QLocalServer &server, quint16 port) const {
    const std::string socket = AttendanceSocket(QFile::encodeName(folder_.path()).toStdString(), port);
    ASSERT_TRUE(server.listen(QFile::decodeName(socket.c_str()))) << server.errorString().toStdString();
  }

  void StopLooking() { starter_.reset(); }

  int Pause() const { return static_cast<int>(starter_->Pause().count()); }

 private:
  QTemporaryDir folder_;
  ReservedPort port_;
  QStringList log_;
  std::optional<MirrorStarter> starter_;
};

TEST_F(MirrorStarterTest, StartsTheMirrorWhenNobodyListens) {
  WriteMirror();
  LookAt(port());
  EXPECT_EQ(Starts(), 0);

  EXPECT_TRUE(QTest::qWaitFor([&] { return Starts() > 0; }, timeout));
  EXPECT_TRUE(Text("starts").startsWith("--attended " + QFile::encodeName(QFileInfo(PathOf("mirror")).path()) + '\n'));
}

TEST_F(MirrorStarterTest, StartsTheMirrorInASessionOfItsOwnSoThatItOutlivesTheMonitor) {
  // The sixth field is the session's number.
  WriteMirror("cut -d ' ' -f 6 /proc/$$/stat > session.new && mv session.new session\nexec sleep 60\n");
  LookAt(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return !Text("session").isEmpty(); }, timeout));

  EXPECT_GT(Text("session").toInt(), 0);
  EXPECT_NE(Text("session").toInt(), ::getsid(0));
}

TEST_F(MirrorStarterTest, StartsNoSecondMirrorWhileTheFirstOneIsStarting) {
  WriteMirror("exec sleep 60\n");
  LookAt(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return Starts() > 0; }, timeout));
  QTest::qWait(5 * a_moment);

  EXPECT_EQ(Starts(), 1);
  EXPECT_EQ(log(), QStringList());
}

TEST_F(MirrorStarterTest, StartsAMirrorThatEndsAtOnceAfterGrowingPauses) {
  WriteMirror("echo 'borvane-mirror: out of luck' >&2\nexit 3\n");
  QElapsedTimer time;
  time.start();
  LookAt(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return Starts() == 5; }, timeout));

  // 100, 200, 400 and 800 ms, less what Qt's timers may come too early.
  EXPECT_GE(time.elapsed(), 1400);
  EXPECT_EQ(log(), QStringList("no data source: " + PathOf("mirror") + " ended with status 3: out of luck"));
}

TEST(MirrorTimes, GrowFromATenthOfASecondToAMinute) {
  const MirrorTimes times;
  EXPECT_EQ(times.answer_timeout, 2s);
  EXPECT_EQ(times.between_looks_at_a_mirror, 10s);
  EXPECT_EQ(times.first_pause, 100ms);
  EXPECT_EQ(times.longest_pause, 60s);
  EXPECT_EQ(times.longest_while_starting, 2s);
}

TEST_F(MirrorStarterTest, BeginsWithTheFirstPauseAgainAfterAMirrorWasThere) {
  // At the fifth look a mirror is there; before and after it, another program.
  std::vector<int> pauses;
  ScriptedServer server([&](QTcpSocket &connection, const std::string &line) {
    pauses.push_back(Pause());
    const ScriptedServer::Answer answer = pauses.size() == 5 ? Writes(mirror_answer) : Serves("not a mirror");
    answer(connection, line);
  });
  LookAt(static_cast<quint16>(std::stoi(server.port())),
         {.answer_timeout = 60s, .between_looks_at_a_mirror = 7ms, .first_pause = 10ms, .longest_pause = 30ms});
  ASSERT_TRUE(QTest::qWaitFor([&] { return pauses.size() >= 9; }, timeout));

  pauses.resize(9);
  EXPECT_EQ(pauses, (std::vector<int>{0, 10, 20, 30, 30, 7, 10, 20, 30}));
  EXPECT_EQ(log().size(), 3) << "no data source, it is back, and none again";
}

TEST_F(MirrorStarterTest, LogsThatAMirrorCannotBeStarted) {
  QFile file(PathOf("mirror"));
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write("#!/nowhere/shell\n");
  file.close();
  ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  LookAt(port());

  EXPECT_TRUE(LogsWithin("no data source: " + PathOf("mirror") + " cannot be started"));
}

TEST_F(MirrorStarterTest, LogsAnotherCauseAsSoonAsThereIsOne) {
  WriteMirror("if [ -e other ]; then exit 4; fi\nkill -SEGV $$\n");
  LookAt(port());
  ASSERT_TRUE(LogsWithin("no data source: " + PathOf("mirror") + " crashed"));
  QFile(PathOf("other")).open(QFile::WriteOnly);

  EXPECT_TRUE(LogsWithin("no data source: " + PathOf("mirror") + " ended with status 4"));
  EXPECT_EQ(log().size(), 2);
}

TEST_F(MirrorStarterTest, LeavesAForeignProgramAtThePortAloneAndLogsItOnce) {
  WriteMirror();
  ScriptedServer foreign(Serves("not a mirror"));
  const auto port = static_cast<quint16>(std::stoi(foreign.port()));
  LookAt(port);
  ASSERT_TRUE(QTest::qWaitFor([&] { return foreign.request_lines().size() == 4; }, timeout));

  EXPECT_EQ(Starts(), 0);
  EXPECT_EQ(log(), QStringList(ProgramAt(port) + "is not borvane-mirror"));
}

TEST_F(MirrorStarterTest, LeavesAMirrorOfOtherPagesAloneAndSaysWhatItIs) {
  WriteMirror();
  const std::string head = "HTTP/1.1 200 OK\r\nServer: borvane-mirror/99.0.1\r\n";
  ScriptedServer with_others(Writes(head + "Borvane-Pages: 2\r\n\r\n"));
  ScriptedServer with_unknown(Writes(head + "\r\n"));
  for (const ScriptedServer *other : {&with_others, &with_unknown}) {
    const auto port = static_cast<quint16>(std::stoi(other->port()));
    LookAt(port);

    EXPECT_TRUE(LogsWithin(ProgramAt(port) + "is a borvane-mirror whose pages this version cannot read"));
    EXPECT_EQ(Starts(), 0);
    StopLooking();
  }
}

TEST_F(MirrorStarterTest, LeavesAProgramThatHangsUpAlone) {
  WriteMirror();
  ScriptedServer foreign(Writes("HTTP/1.1 200 OK\r\nServer: borvane-mirror/2"));
  const auto port = static_cast<quint16>(std::stoi(foreign.port()));
  LookAt(port);

  EXPECT_TRUE(LogsWithin(ProgramAt(port) + "is not borvane-mirror"));
  EXPECT_EQ(Starts(), 0);
}

TEST_F(MirrorStarterTest, LeavesAProgramThatNeverAnswersAlone) {
  WriteMirror();
  QTcpServer silent;
  silent.listen(QHostAddress::LocalHost);
  LookAt(silent.serverPort());
  ASSERT_TRUE(LogsWithin(ProgramAt(silent.serverPort()) + "does not answer"));
  // It is asked again.
  delete silent.nextPendingConnection();
  ASSERT_TRUE(QTest::qWaitFor([&] { return silent.hasPendingConnections(); }, timeout));

  EXPECT_EQ(Starts(), 0);
  EXPECT_EQ(log().size(), 1);
}

TEST_F(MirrorStarterTest, LooksForAMirrorBesideTheProgramUntilThereIsOne) {
  LookAt(port());
  ASSERT_TRUE(LogsWithin(QString("no data source: nothing listens at 127.0.0.1:%1, and there is no %2 to start")
                             .arg(port())
                             .arg(PathOf("mirror"))));
  QTest::qWait(a_moment);
  EXPECT_EQ(log().size(), 1);

  WriteMirror("exec sleep 60\n");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Starts() == 1; }, timeout));
}

TEST_F(MirrorStarterTest, LogsThatTheDataSourceIsBack) {
  LookAt(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return log().size() == 1; }, timeout));
  const auto mirror = ServeAsMirror(port());

  EXPECT_TRUE(LogsWithin(QString("the data source is back: borvane-mirror answers at 127.0.0.1:%1").arg(port())));
  EXPECT_EQ(log().size(), 2);
}

TEST_F(MirrorStarterTest, PassesOnWhatARunningMirrorLogs) {
  WriteMirror(
      "echo 'borvane-mirror: before' >&2\nuntil [ -e found ]; do sleep 0.05; done\n"
      "echo 'borvane-mirror: later' >&2\nexec sleep 60\n");
  testing::internal::CaptureStderr();
  LookAt(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return Starts() == 1; }, timeout));
  QLocalServer attendance;
  CountMonitors(attendance, port());
  const auto mirror = ServeAsMirror(port());
  ASSERT_TRUE(QTest::qWaitFor([&] { return attendance.hasPendingConnections(); }, timeout));
  QFile(PathOf("found")).open(QFile::WriteOnly);
  std::string errors;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        errors += testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return errors.ends_with("later\n");
      },
      timeout));
  testing::internal::GetCapturedStderr();

  EXPECT_EQ(errors, "borvane-mirror: before\nborvane-mirror: later\n");
  EXPECT_EQ(log(), QStringList());
}

TEST_F(MirrorStarterTest, HoldsAConnectionToARunningMirrorOfAnyVersion) {
  for (const std::string version : {"2.3.5", "99.0.1"}) {
    ScriptedServer mirror(
        Writes("HTTP/1.1 200 OK\r\nServer: borvane-mirror/" + version + "\r\nBorvane-Pages: 1\r\n\r\n"));
    const auto port = static_cast<quint16>(std::stoi(mirror.port()));
    QLocalServer attendance;
    CountMonitors(attendance, port);
    LookAt(port);
    ASSERT_TRUE(QTest::qWaitFor([&] { return attendance.hasPendingConnections(); }, timeout)) << version;
    std::unique_ptr<QLocalSocket> monitor(attendance.nextPendingConnection());
    QTest::qWait(a_moment);
    EXPECT_EQ(monitor->state(), QLocalSocket::ConnectedState);
    EXPECT_EQ(mirror.request_lines().size(), 1U);
    monitor->abort();

    // The mirror has gone: it is looked for again.
    EXPECT_TRUE(QTest::qWaitFor([&] { return attendance.hasPendingConnections(); }, timeout));
    monitor.reset(attendance.nextPendingConnection());
    StopLooking();
    EXPECT_TRUE(QTest::qWaitFor([&] { return monitor->state() == QLocalSocket::UnconnectedState; }, timeout));
    EXPECT_EQ(log(), QStringList());
  }
}

}  // namespace
}  // namespace borvane
