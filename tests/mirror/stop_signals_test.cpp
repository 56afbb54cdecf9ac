#include "stop_signals.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <memory>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace borvane::mirror
