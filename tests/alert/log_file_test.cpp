#include "alert/log_file.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/fake_files.h"

namespace borvane {
namespace {

const std::string path = "/documents/quakes.log";
const std::vector<std::string> expected = {"one", "two", "three"};

struct LogFileTest : testing::Test {
  int Reads() { return static_cast<int>(trace.Of({"read-file"}).size()); }

  Trace trace;
  FakeFiles files{trace};
  LogFile log{files, path, expected};
};

TEST_F(LogFileTest, IsReadOnceForAllLines) {
  files.Put(path, "one\r\nother\r\n");
  EXPECT_TRUE(log.Contains("one"));
  EXPECT_FALSE(log.Contains("two"));
  log.Append("two");
  EXPECT_TRUE(log.Contains("two"));
  EXPECT_FALSE(log.Contains("three"));
  EXPECT_EQ(Reads(), 1);
  EXPECT_EQ(files.ContentOf(path), "one\r\nother\r\ntwo\r\n");
}

TEST_F(LogFileTest, IsReadAgainWhenAnotherProgramHasChangedIt) {
  files.Put(path, "one\r\n");
  EXPECT_FALSE(log.Contains("two"));
  files.Extend(path, "two\r\n");
  EXPECT_TRUE(log.Contains("two"));
  EXPECT_EQ(Reads(), 2);
  files.Put(path, "one\r\nsix\r\n");
  EXPECT_FALSE(log.Contains("two")) << "another file of the same size";
  EXPECT_EQ(Reads(), 3);
}

TEST_F(LogFileTest, IsReadAgainWhenItChangedJustBeforeALineWasAppended) {
  files.Put(path, "one\r\n");
  EXPECT_FALSE(log.Contains("two"));
  files.BeforeCall("append", 1, [&] { files.Extend(path, "three\r\n"); });
  log.Append("two");
  EXPECT_TRUE(log.Contains("three"));
  EXPECT_EQ(Reads(), 2);
}

TEST_F(LogFileTest, IsReadAgainWhenItChangedWhileItWasRead) {
  files.Put(path, "one\r\n");
  files.BeforeCall("read-file", 1, [&] { files.Extend(path, "two\r\n"); });
  EXPECT_TRUE(log.Contains("two"));
  EXPECT_TRUE(log.Contains("one"));
  EXPECT_EQ(Reads(), 2);
}

TEST_F(LogFileTest, TakesWhatFollowsTheLastLineEndForALineUntilSomethingIsAppended) {
  files.Put(path, "one\r\ntwo");
  EXPECT_TRUE(log.Contains("two"));
  EXPECT_FALSE(log.Contains("three"));
  log.Append("three");
  EXPECT_FALSE(log.Contains("two"));
  EXPECT_FALSE(log.Contains("three"));
  EXPECT_EQ(files.ContentOf(path), "one\r\ntwothree\r\n");
}

TEST_F(LogFileTest, HasALineThatComesBeforeAFault) {
  files.Put(path, "one\r\ntwo\r\nthree\r\n");
  files.Damage(path, 5);
  EXPECT_TRUE(log.Contains("one"));
  EXPECT_EQ(FailureOf([&] { log.Contains("two"); }), file_access);
}

TEST_F(LogFileTest, TakesNoPartOfALineBeforeAFaultForALine) {
  files.Put(path, "one\r\ntwo\r\n");
  files.Damage(path, 8);
  EXPECT_EQ(FailureOf([&] { log.Contains("two"); }), file_access);
}

TEST_F(LogFileTest, IsWholeAgainWhenTheFaultHasPassed) {
  files.Put(path, "one\r\ntwo\r\n");
  files.FailCall(2);
  EXPECT_EQ(FailureOf([&] { log.Contains("two"); }), file_access);
  EXPECT_TRUE(files.HasFailed());
  EXPECT_TRUE(log.Contains("two"));
}

TEST_F(LogFileTest, FailsWhereThereIsNoFile) {
  EXPECT_EQ(FailureOf([&] { log.Contains("one"); }), file_access);
  files.PutFolder(path);
  EXPECT_EQ(FailureOf([&] { log.Contains("one"); }), file_access);
}

TEST_F(LogFileTest, FailsWhereAFolderTakesItsPlaceBeforeALineIsAppended) {
  files.Put(path, "");
  EXPECT_FALSE(log.Contains("one"));
  files.Remove(path);
  files.PutFolder(path);
  EXPECT_EQ(FailureOf([&] { log.Append("one"); }), file_access);
}

TEST_F(LogFileTest, IsCreatedEmptyWhenThereIsNone) {
  log.Ensure();
  EXPECT_EQ(files.ContentOf(path), "");
  EXPECT_FALSE(log.Contains("one"));
  log.Append("one");
  log.Ensure();
  EXPECT_EQ(files.ContentOf(path), "one\r\n");
}

TEST_F(LogFileTest, FindsNoEmptyLineAtTheEndOfAText) {
  const std::vector<std::string> empty = {""};
  LogFile lines(files, path, empty);
  files.Put(path, "");
  EXPECT_FALSE(lines.Contains(""));
  lines.Append("");
  EXPECT_TRUE(lines.Contains(""));
  EXPECT_EQ(files.ContentOf(path), "\r\n");
}

}  // namespace
}  // namespace borvane
