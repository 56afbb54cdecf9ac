#include "log/log.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/mirror/mirror_process.h"

namespace borvane::mirror {
namespace {

TEST(LogLine, BeginsWithTheProgramsName) {
  EXPECT_EQ(LogLine(LogLevel::Error, "the disk is full", false), "borvane-mirror: the disk is full\n");
}

TEST(LogLine, BeginsWithItsLevelInTheJournal) {
  EXPECT_EQ(LogLine(LogLevel::Error, "a", true), "<3>borvane-mirror: a\n");
  EXPECT_EQ(LogLine(LogLevel::Warning, "a", true), "<4>borvane-mirror: a\n");
  EXPECT_EQ(LogLine(LogLevel::Info, "a", true), "<6>borvane-mirror: a\n");
}

TEST(LogLine, IsOneLineWhateverTheTextSays) {
  EXPECT_EQ(LogLine(LogLevel::Info, "a\n<0>b\r\x1b[2J\u0085c", false), "borvane-mirror: a?<0>b??[2J?c\n");
}

TEST(LogLevelOf, KnowsThreeNames) {
  EXPECT_EQ(LogLevelOf("error"), LogLevel::Error);
  EXPECT_EQ(LogLevelOf("warning"), LogLevel::Warning);
  EXPECT_EQ(LogLevelOf("info"), LogLevel::Info);
  for (const char *name : {"", "Error", "debug", "3"})
    EXPECT_EQ(LogLevelOf(name), std::nullopt) << name;
}

/// What a mirror logs that finds no address to listen at.
QByteArray LogOf(const QStringList &arguments, const Surroundings &surroundings = {}) {
  MirrorProcess mirror(QStringList{"--listen", "192.0.2.1:0"} + arguments, surroundings);
  EXPECT_EQ(mirror.StatusWithin(60'000), 1);
  return mirror.Errors();
}

TEST(Log, HasNoLevelsForATerminal) {
  EXPECT_TRUE(LogOf({}).startsWith("borvane-mirror: cannot listen"));
  EXPECT_TRUE(LogOf({}, {.variables = {"JOURNAL_STREAM=1:2"}}).startsWith("borvane-mirror: cannot listen"))
      << "the variable of another program";
}

TEST(Log, LeavesOutWhatMattersLess) {
  const QTemporaryDir folder;
  const QStringList missing = {"--catalogue", folder.filePath("missing.geojson")};
  MirrorProcess quiet(missing + QStringList{"--log-level", "error"});
  MirrorProcess usual(missing);
  ASSERT_NE(quiet.Port(), 0);
  ASSERT_NE(usual.Port(), 0);
  EXPECT_TRUE(usual.LogsWithin("missing.geojson cannot be used", 60'000));
  EXPECT_EQ(quiet.Errors(), "");
  EXPECT_TRUE(LogOf({"--log-level=error"}).contains("cannot listen"));
}

}  // namespace
}  // namespace borvane::mirror
