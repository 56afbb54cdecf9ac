#include "desktop/services/mirror_starter.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "desktop/screen_rig.h"
#include "desktop/scripted_server.h"
#include "feed/hosts.h"
#include "mirror/attendance.h"

namespace borvane {
namespace {

constexpr int patience = 10'000;  // milliseconds
constexpr int a_moment = 200;     // milliseconds

/// A port at which nobody listens just now.
quint16 FreePort() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return server.serverPort();
}

class MirrorStarterTest : public testing::Test {
 protected:
  /// A program that writes down how it was started, in place of the mirror.
  QString WriteMirror() {
    QFile script(folder_.filePath("mirror"));
    EXPECT_TRUE(script.open(QFile::WriteOnly));
    script.write("#!/bin/sh\necho \"$@\" >> '" + QFile::encodeName(folder_.filePath("starts")) + "'\n");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return script.fileName();
  }

  QByteArray starts() const {
    QFile file(folder_.filePath("starts"));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(MirrorStarterTest, StartsTheMirrorWhenNobodyListens) {
  MirrorStarter starter(FreePort(), WriteMirror(), {"--attended"});
  EXPECT_EQ(starts(), "");
  starter.Start();

  EXPECT_TRUE(QTest::qWaitFor([&] { return starts().startsWith("--attended\n"); }, patience));
}

TEST_F(MirrorStarterTest, LeavesAForeignProgramAtThePortAlone) {
  ScriptedServer foreign(Serves("not a mirror"));
  MirrorStarter starter(static_cast<quint16>(std::stoi(foreign.port())), WriteMirror(), {"--attended"});
  starter.Start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !foreign.request_lines().empty(); }, patience));
  QTest::qWait(a_moment);

  EXPECT_EQ(starts(), "");
}

TEST_F(MirrorStarterTest, LeavesAProgramThatNeverAnswersAlone) {
  QTcpServer silent;
  silent.listen(QHostAddress::LocalHost);
  MirrorStarter starter(silent.serverPort(), WriteMirror(), {"--attended"});
  starter.Start();
  QTest::qWait(a_moment);

  EXPECT_EQ(starts(), "");
}

TEST_F(MirrorStarterTest, DoesNothingWithoutAMirrorBesideTheProgram) {
  MirrorStarter starter(FreePort(), "/nowhere/borvane-mirror", {"--attended"});
  starter.Start();
  QTest::qWait(a_moment);

  EXPECT_EQ(starts(), "");
}

TEST_F(MirrorStarterTest, HoldsAConnectionToARunningMirror) {
  ScriptedServer mirror(Writes("HTTP/1.1 200 OK\r\nServer: borvane-mirror/2.3.5\r\nContent-Length: 0\r\n\r\n"));
  const auto port = static_cast<quint16>(std::stoi(mirror.port()));
  QLocalServer attendance;
  // A test that was killed may have left its socket at the same port.
  QLocalServer::removeServer(mirror::AttendanceSocketName(port));
  ASSERT_TRUE(attendance.listen(mirror::AttendanceSocketName(port)));
  {
    MirrorStarter starter(port, WriteMirror(), {"--attended"});
    starter.Start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return attendance.hasPendingConnections(); }, patience));
    QLocalSocket *monitor = attendance.nextPendingConnection();
    QTest::qWait(a_moment);
    EXPECT_EQ(monitor->state(), QLocalSocket::ConnectedState);
    EXPECT_EQ(starts(), "");
    monitor->abort();

    // The mirror has gone: it is looked for again.
    EXPECT_TRUE(QTest::qWaitFor([&] { return attendance.hasPendingConnections(); }, patience));
  }
  QLocalSocket *monitor = attendance.nextPendingConnection();
  EXPECT_TRUE(QTest::qWaitFor([&] { return monitor->state() == QLocalSocket::UnconnectedState; }, patience));
}

TEST(PortOfDefaultHosts, IsThatOfTheMirrorUntilAllHostsAreOthers) {
  ScreenRig rig;
  EXPECT_EQ(PortOfDefaultHosts(), 17650);
  for (const EndpointHost &row : endpoint_hosts) {
    EXPECT_EQ(PortOfDefaultHosts(), 17650);
    rig.store().Put(hosts_key, row.name, "example.org");
  }
  EXPECT_EQ(PortOfDefaultHosts(), std::nullopt);
}

}  // namespace
}  // namespace borvane
