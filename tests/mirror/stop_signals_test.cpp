#include "stop_signals.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"

namespace borvane::mirror {
namespace {

class StoppedMirror : public testing::Test {
 protected:
  /// A mirror that has kept a report.
  std::unique_ptr<MirrorProcess> Start() {
    auto mirror = std::make_unique<MirrorProcess>(QStringList{"--store", file_});
    EXPECT_EQ(Ask(*mirror, "puta&map=A&strout=felt"), "ok");
    return mirror;
  }
  static QByteArray Ask(MirrorProcess &mirror, const QByteArray &command) {
    const std::optional<Response> response = AskMaker(mirror.Port(), command);
    return response ? response->body : "no answer";
  }

  QTemporaryDir folder_;
  const QString file_ = folder_.filePath("service.sqlite");
};
class EachStopSignal : public StoppedMirror, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(StopSignals, EachStopSignal, testing::Values(SIGTERM, SIGINT),
                         [](const auto &given) { return given.param == SIGTERM ? "SIGTERM" : "SIGINT"; });

TEST_P(EachStopSignal, LeavesTheStoreInOneFile) {
  const std::unique_ptr<MirrorProcess> mirror = Start();
  mirror->Signal(GetParam());
  EXPECT_EQ(mirror->StatusWithin(30'000), 0);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("service.sqlite"));
  EXPECT_EQ(Ask(*Start(), "geta&map=A"), "felt\nfelt\n");
}

TEST_F(StoppedMirror, LeavesAFileAloneThatWasMovedOverItsStore) {
  {
    const std::unique_ptr<MirrorProcess> first = Start();
    first->Signal(SIGTERM);
    ASSERT_EQ(first->StatusWithin(30'000), 0);
  }
  const QString backup = folder_.filePath("backup.sqlite");
  ASSERT_TRUE(QFile::copy(file_, backup));
  const std::unique_ptr<MirrorProcess> mirror = Start();
  for (int i = 0; i < 20; ++i)
    EXPECT_EQ(Ask(*mirror, "puta&map=" + QByteArray::number(i) + "&strout=" + QByteArray(900, 'x')), "ok");
  EXPECT_EQ(std::rename(QFile::encodeName(backup).constData(), QFile::encodeName(file_).constData()), 0);
  mirror->Signal(SIGTERM);
  EXPECT_EQ(mirror->StatusWithin(30'000), 0);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("service.sqlite"));
  EXPECT_EQ(Ask(*Start(), "geta&map=A"), "felt\nfelt\n");
}

/// A mirror with a configuration file of its own.
class RereadingMirror : public testing::Test {
 protected:
  void Configure(const QByteArray &text) {
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("offline = true\n" + text);
  }

  bool Lists(MirrorProcess &mirror) {
    const std::optional<Response> page = Get(mirror.Port(), "/recenteqs/Maps/Los_Angeles.html");
    return page && page->body.contains("/recenteqs/Quakes/");
  }

  static constexpr const char *antarctic =
      "[[area]]\nname = \"Los Angeles\"\nsouth = -90\nnorth = -89\nwest = 0\neast = 1\n";

  QTemporaryDir folder_;
  const QString file_ = folder_.filePath("mirror.toml");
};

TEST_F(RereadingMirror, TakesUpWhatItCanAndNamesTheRest) {
  Configure("");
  MirrorProcess mirror({"--config", file_});
  EXPECT_TRUE(Lists(mirror));
  Configure(QByteArray("newest-version = \"9.9.9\"\n") + antarctic);
  mirror.Signal(SIGHUP);
  ASSERT_TRUE(mirror.LogsWithin("the configuration has been read again", 60'000)) << mirror.Errors().constData();
  EXPECT_FALSE(Lists(mirror));
  EXPECT_TRUE(mirror.Errors().contains("the changed \"newest-version\" takes effect at the next start"));
  EXPECT_FALSE(mirror.Errors().contains("\"listen\"")) << "it comes from the command line";
}

TEST_F(RereadingMirror, KeepsWhatItHasWhereTheFileHasFaults) {
  Configure(antarctic);
  MirrorProcess mirror({"--config", file_});
  EXPECT_FALSE(Lists(mirror));
  Configure("perod = 1\n");
  mirror.Signal(SIGHUP);
  ASSERT_TRUE(mirror.LogsWithin("stays as it was", 60'000)) << mirror.Errors().constData();
  EXPECT_TRUE(mirror.Errors().contains("mirror.toml:2: unknown key \"perod\""));
  EXPECT_FALSE(Lists(mirror));
  EXPECT_TRUE(QFile::remove(file_));
  mirror.Signal(SIGHUP);
  ASSERT_TRUE(mirror.LogsWithin("mirror.toml: No such file or directory", 60'000));
  EXPECT_FALSE(Lists(mirror));
}

TEST_F(RereadingMirror, ChangesTheLevelOfItsLog) {
  Configure("log-level = \"error\"\n");
  MirrorProcess mirror({"--config", file_});
  ASSERT_NE(mirror.Port(), 0);
  Configure("log-level = \"info\"\n");
  mirror.Signal(SIGHUP);
  EXPECT_TRUE(mirror.LogsWithin("the configuration has been read again", 60'000));
}

TEST_F(RereadingMirror, StillEndsAtSigterm) {
  Configure("");
  MirrorProcess mirror({"--config", file_});
  ASSERT_NE(mirror.Port(), 0);
  for (int i = 0; i < 20; ++i)
    mirror.Signal(SIGHUP);
  mirror.Signal(SIGTERM);
  EXPECT_EQ(mirror.StatusWithin(60'000), 0);
}

TEST_F(RereadingMirror, EndsWhereItsTerminalGoes) {
  Configure("");
  for (const bool is_for_errors : {true, false}) {
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(terminal, 0);
    ASSERT_EQ(::grantpt(terminal), 0);
    ASSERT_EQ(::unlockpt(terminal), 0);
    Surroundings surroundings;
    (is_for_errors ? surroundings.errors_to : surroundings.input_from) = ::ptsname(terminal);
    MirrorProcess mirror({"--config", file_}, surroundings);
    ASSERT_NE(mirror.Port(), 0);
    mirror.Signal(SIGHUP);
    EXPECT_TRUE(Lists(mirror)) << "the terminal is there";
    ::close(terminal);
    mirror.Signal(SIGHUP);
    EXPECT_EQ(mirror.StatusWithin(60'000), 0) << (is_for_errors ? "errors" : "input");
  }
}

}  // namespace
}  // namespace borvane::mirror
