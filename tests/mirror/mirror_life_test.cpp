#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <memory>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/attendance.h"
#include "support/mirror/client.h"
#include "support/mirror/flood.h"
#include "support/mirror/mirror_process.h"
#include "support/reserved_port.h"

// How long a mirror lives that a monitor has started.

namespace borvane::mirror {
namespace {

/// Where the sockets are: in the folder that main() has set.
QString Folder() { return QDir::tempPath(); }

QString SocketAt(quint16 port) {
  return QFile::decodeName(AttendanceSocket(QFile::encodeName(Folder()).toStdString(), port).c_str());
}

/// What a monitor holds for as long as it runs.
std::unique_ptr<QLocalSocket> Attend(quint16 port) {
  auto socket = std::make_unique<QLocalSocket>();
  socket->connectToServer(SocketAt(port));
  EXPECT_TRUE(socket->waitForConnected(30'000)) << socket->errorString().toStdString();
  return socket;
}

/// A process of its own that holds a connection to the mirror, as a monitor does, until it is killed.
pid_t StartMonitorProcess(quint16 port) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const QByteArray path = QFile::encodeName(SocketAt(port));
  qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
  int ready[2] = {};
  EXPECT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool connected = ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    if (connected && ::write(ready[1], "+", 1) == 1)
      ::pause();
    ::_exit(1);
  }
  ::close(ready[1]);
  char byte = 0;
  EXPECT_EQ(::read(ready[0], &byte, 1), 1) << "the process could not connect";
  ::close(ready[0]);
  return child;
}

void Kill(pid_t child) {
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

TEST(AttendedMirror, EndsTwoSecondsAfterTheLastMonitorHasGone) {
  MirrorProcess mirror({"--attended", Folder()});
  auto monitor = Attend(mirror.Port());
  QThread::msleep(300);
  QElapsedTimer clock;
  clock.start();
  monitor.reset();
  EXPECT_EQ(mirror.StatusWithin(30'000), 0);
  EXPECT_GE(clock.elapsed(), 1800);
  EXPECT_LT(clock.elapsed(), 9000);
}

TEST(AttendedMirror, EndsWhenItsMonitorIsKilled) {
  MirrorProcess mirror({"--attended", Folder()});
  const pid_t monitor = StartMonitorProcess(mirror.Port());
  EXPECT_EQ(mirror.StatusWithin(500), std::nullopt);
  Kill(monitor);
  EXPECT_EQ(mirror.StatusWithin(30'000), 0);
}

TEST(AttendedMirror, StaysWhileOneOfTwoMonitorsIsThere) {
  MirrorProcess mirror({"--attended", Folder()});
  const pid_t killed = StartMonitorProcess(mirror.Port());
  const auto stays = Attend(mirror.Port());
  Kill(killed);
  EXPECT_EQ(mirror.StatusWithin(3500), std::nullopt);
  EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
}

TEST(AttendedMirror, StaysWhenAMonitorComesBackInTime) {
  MirrorProcess mirror({"--attended", Folder()});
  Attend(mirror.Port()).reset();
  QThread::msleep(100);
  const auto monitor = Attend(mirror.Port());
  EXPECT_EQ(mirror.StatusWithin(3000), std::nullopt);
}

TEST(AttendedMirror, EndsAfterTenSecondsWhenNoMonitorComes) {
  QElapsedTimer clock;
  clock.start();
  MirrorProcess mirror({"--attended", Folder()});
  ASSERT_NE(mirror.Port(), 0);
  EXPECT_EQ(mirror.StatusWithin(30'000), 0);
  EXPECT_GE(clock.elapsed(), 9000);
}

TEST(AttendedMirror, TakesUpTheSocketThatAKilledOneLeftBehind) {
  const ReservedPort port;
  const QStringList there = {"--attended", Folder(), "--listen", QString("127.0.0.1:%1").arg(port.Number())};
  EXPECT_EQ(MirrorProcess(there).Port(), port.Number());
  ASSERT_TRUE(QFile::exists(SocketAt(port.Number())));
  MirrorProcess mirror(there);
  ASSERT_EQ(mirror.Port(), port.Number());
  const auto monitor = Attend(port.Number());
  EXPECT_EQ(mirror.StatusWithin(3000), std::nullopt);
}

TEST(AttendedMirror, EndsWhenAnotherProgramHasItsSocket) {
  const ReservedPort port;
  QLocalServer other;
  ASSERT_TRUE(other.listen(SocketAt(port.Number())));
  MirrorProcess mirror({"--attended", Folder(), "--listen", QString("127.0.0.1:%1").arg(port.Number())});
  EXPECT_EQ(mirror.StatusWithin(60'000), 1);
  EXPECT_EQ(mirror.Errors(),
            "borvane-mirror: another program listens at " + QFile::encodeName(SocketAt(port.Number())) + '\n');
}

TEST(AttendedMirror, LetsNoOtherUserConnect) {
  MirrorProcess mirror({"--attended", Folder()});
  ASSERT_NE(mirror.Port(), 0);
  const QFile::Permissions of_others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  EXPECT_FALSE(QFile::permissions(SocketAt(mirror.Port())) & of_others);
}

TEST(AttendedMirror, TakesNoNoticeOfWhatAMonitorSends) {
  MirrorProcess mirror({"--attended", Folder()});
  const auto monitor = Attend(mirror.Port());
  monitor->write(QByteArray(1'000'000, 'x'));
  while (monitor->bytesToWrite() > 0)
    ASSERT_TRUE(monitor->waitForBytesWritten(60'000));
  EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
}

TEST(AttendedMirror, EndsAfterTheLastMonitorAlsoWhileAClientAsksWithoutAPause) {
  MirrorProcess mirror({"--attended", Folder()});
  auto monitor = Attend(mirror.Port());
  const Flood flood(mirror.Port());
  ASSERT_TRUE(flood.GetsMore());
  monitor.reset();
  EXPECT_EQ(mirror.StatusWithin(60'000), 0);
}

TEST(Mirror, EndsBySignalWhileAClientAsksWithoutAPause) {
  MirrorProcess mirror;
  const Flood flood(mirror.Port());
  ASSERT_TRUE(flood.GetsMore());
  mirror.Signal(SIGTERM);
  EXPECT_EQ(mirror.StatusWithin(60'000), 0);
}

TEST(Mirror, StaysWithoutMonitorsWhenItIsNotAttended) {
  MirrorProcess mirror;
  ASSERT_NE(mirror.Port(), 0);
  QLocalSocket socket;
  socket.connectToServer(SocketAt(mirror.Port()));
  EXPECT_FALSE(socket.waitForConnected(1000));
  EXPECT_EQ(mirror.StatusWithin(3000), std::nullopt);
}

}  // namespace
}  // namespace borvane::mirror
