#include "alert/quake_log.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "core/program.h"
#include "settings/conffrm.h"
#include "support/failure_of.h"
#include "support/program/log_rig.h"

namespace borvane {
namespace {

// The folder.

TEST(GetSpecialFolderPath, GivesTheFolderWithThatNumber) {
  LogRig rig;
  std::int32_t documents = 5;
  EXPECT_EQ(GetSpecialFolderPath(documents), "/documents");
  EXPECT_EQ(rig.trace(), Lines{"folder 5"});
  rig.files().HaveNoSpecialFolders();
  EXPECT_EQ(GetSpecialFolderPath(documents), "");
}

TEST(EnsureLogFolder, MakesTheFolderOnce) {
  LogRig rig;
  Module1->LogFolder = "elsewhere";
  rig.happen(EnsureLogFolder);
  EXPECT_EQ(Module1->LogFolder, log_folder);
  EXPECT_EQ(rig.trace(), (Lines{"folder 5", "exists " + log_folder, "make-folder " + log_folder}));
  rig.clear_trace();
  rig.happen(EnsureLogFolder);
  EXPECT_EQ(rig.trace(), (Lines{"folder 5", "exists " + log_folder}));
}

TEST(EnsureLogFolder, MakesOneLevelOnly) {
  LogRig rig;
  rig.files().Remove("/documents");
  EXPECT_EQ(FailureOf(EnsureLogFolder), 75);
  EXPECT_FALSE(rig.files().HasFolder("/documents"));
}

TEST(InitLogPath, EnablesLogsWhenTheFileIsThere) {
  LogRig rig;
  Module1->LogFolder = "elsewhere";
  rig.happen(InitLogPath);
  EXPECT_EQ(Module1->LogFolder, log_folder);
  EXPECT_FALSE(frmRecords->Label5.Enabled());
  EXPECT_EQ(rig.trace(), (Lines{"folder 5", "exists " + log_path})) << "makes nothing";
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, "");
  rig.happen(InitLogPath);
  EXPECT_TRUE(frmRecords->Label5.Enabled());
  rig.files().Remove(log_path);
  rig.happen(InitLogPath);
  EXPECT_FALSE(frmRecords->Label5.Enabled());
}

TEST(InitLogPath, NamesAFolderFromTheRootWhenTheDocumentsFolderIsNotKnown) {
  LogRig rig;
  rig.files().HaveNoSpecialFolders();
  rig.happen(InitLogPath);
  EXPECT_EQ(Module1->LogFolder, "/Borvane");
  EXPECT_EQ(LogPath(), "/Borvane/quakes.log");
}

// Lines.

TEST(WriteQuakeLog, WritesARowAsItIsDisplayed) {
  LogRig rig;
  rig.add_row("2.0", {"2018/02/07", "01:26:13", "in a fourth column"});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 2018/02/07 01:26:13\r\n");
}

TEST(WriteQuakeLog, WritesAsManyTextsAsTheListHasColumns) {
  for (const auto &[columns, line] : std::initializer_list<std::pair<int, const char *>>{
           {0, "2.0\r\n"}, {1, "2.0\r\n"}, {2, "2.0 a\r\n"}, {4, "2.0 a b \r\n"}}) {
    LogRig rig;
    frmRecords->ListView1.ColumnHeaders.Clear();
    for (int column = 0; column < columns; ++column)
      frmRecords->ListView1.ColumnHeaders.Add("");
    rig.add_row("2.0", {"a", "b"});
    rig.write();
    EXPECT_EQ(rig.log(), line) << columns;
  }
}

TEST(WriteQuakeLog, LeavesTwoBlanksForAnEmptyText) {
  LogRig rig;
  rig.add_row("2.0", {"", "b c"});
  rig.add_row("", {"", ""});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0  b c\r\n  \r\n");
}

TEST(WriteQuakeLog, LeavesOutEachTextWithHtmInIt) {
  RecordProperty("quirk", "log-leaves-out-any-htm");
  LogRig rig;
  rig.add_row("2.0", {"Quakes/ci1.html", "b"});
  rig.add_row("2.1", {"a", "Bahtma, Guam"});
  rig.add_row("2.2", {"htm", "x.htm"});
  rig.add_row("2.3", {"x.HTML", "ht m"});
  rig.add_row("2.4 htm", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 b\r\n2.1 a\r\n2.2\r\n2.3 x.HTML ht m\r\n2.4 htm a b\r\n");
}

TEST(WriteQuakeLog, LogsAllRowsWhateverOnlyForSays) {
  RecordProperty("quirk", "log-ignores-only-for");
  LogRig rig;
  rig.happen([] {
    conffrm->Option2(1).Value = true;
    conffrm->Text8.Text = "Castaic";
  });
  rig.add_row("2.0", {"Castaic", ""});
  rig.add_row("2.1", {"Trona", ""});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 Castaic \r\n2.1 Trona \r\n");
}

TEST(WriteQuakeLog, WritesTheBytesOfTheText) {
  using namespace std::string_literals;
  LogRig rig;
  rig.add_row("\xE9\x80\x81", {"a\0b"s, "\x1A\t"});
  rig.write();
  EXPECT_EQ(rig.log(), "\xE9\x80\x81 a\0b \x1A\t\r\n"s);
}

// What is in the file already.

TEST(WriteQuakeLog, AppendsTheNewRowsInTheirOrder) {
  LogRig rig;
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, "first\r\n2.1 a b\r\n");
  rig.add_row("2.2", {"a", "b"});
  rig.add_row("2.1", {"a", "b"});
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "first\r\n2.1 a b\r\n2.2 a b\r\n2.0 a b\r\n");
  rig.write();
  EXPECT_EQ(rig.log(), "first\r\n2.1 a b\r\n2.2 a b\r\n2.0 a b\r\n");
}

TEST(WriteQuakeLog, WritesTwoEqualRowsOnce) {
  LogRig rig;
  rig.add_row("2.0", {"a", "b"});
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b\r\n");
}

TEST(WriteQuakeLog, WritesARevisedRowAgain) {
  LogRig rig;
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  frmRecords->ListView1.ListItems.SetText(1, "2.1");
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b\r\n2.1 a b\r\n");
}

TEST(WriteQuakeLog, MakesTheFolderButNoFileForAnEmptyList) {
  LogRig rig;
  rig.write();
  EXPECT_TRUE(rig.files().HasFolder(log_folder));
  EXPECT_EQ(rig.log(), "none");
}

TEST(WriteQuakeLog, WritesEveryRowIntoAFileOfZeroBytes) {
  LogRig rig;
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, "");
  rig.add_row("2.0", {"a", "b"});
  rig.add_row("2.1", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b\r\n2.1 a b\r\n");
}

TEST(WriteQuakeLog, WritesEveryRowAgainWhenTheFileHasBeenDeleted) {
  LogRig rig;
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  rig.files().Remove(log_path);
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b\r\n");
  rig.files().Remove(log_folder);
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b\r\n");
}

TEST(WriteQuakeLog, AppendsRightAfterALastLineWithoutEnd) {
  RecordProperty("quirk", "log-joins-a-last-line-without-end");
  LogRig rig;
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, "2.0 a b");
  rig.add_row("2.0", {"a", "b"});
  rig.add_row("2.1", {"a", "b"});
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b2.1 a b\r\n2.0 a b\r\n");
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b2.1 a b\r\n2.0 a b\r\n2.1 a b\r\n") << "the joined row once more";
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a b2.1 a b\r\n2.0 a b\r\n2.1 a b\r\n");
}

TEST(WriteQuakeLog, ReadsPastALineOfAMegabyte) {
  LogRig rig;
  const std::string before = std::string(1'000'000, 'x') + "\r\n2.0 a b\r\n";
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, before);
  rig.add_row("2.0", {"a", "b"});
  rig.add_row("2.1", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), before + "2.1 a b\r\n");
}

TEST(WriteQuakeLog, ReadsPastTheBytesZeroAndTwentySix) {
  using namespace std::string_literals;
  LogRig rig;
  const std::string before = "x\0\x1A\r\n\x1A\r\n2.0 a b\r\n"s;
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, before);
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), before);
}

TEST(WriteQuakeLog, FindsARowWithALoneLineEndAgain) {
  LogRig rig;
  rig.add_row("2.0", {"a\rb", "c\nd"});
  rig.write();
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a\rb c\nd\r\n");
}

TEST(WriteQuakeLog, AppendsARowThatIsTwoLinesEachTime) {
  LogRig rig;
  rig.add_row("2.0", {"a\r\nb", "c"});
  rig.write();
  rig.write();
  EXPECT_EQ(rig.log(), "2.0 a\r\nb c\r\n2.0 a\r\nb c\r\n");
}

TEST(WriteQuakeLog, ReadsTheFileOnceAndAsksForItsStateForEachRow) {
  LogRig rig;
  rig.files().PutFolder(log_folder);
  rig.files().Put(log_path, "2.0 a b\r\n");
  rig.add_row("2.0", {"a", "b"});
  rig.add_row("2.1", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.trace(), (Lines{"folder 5", "exists " + log_folder, "exists " + log_path, "state " + log_path,
                                "read-file " + log_path, "exists " + log_path, "state " + log_path,
                                "append " + log_path + " 2.1 a b\r\n"}));
}

// Faults.

TEST(WriteQuakeLog, EndsSilentlyWhereTheFolderCannotBeMade) {
  LogRig rig;
  rig.files().Remove("/documents");
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.trace(), (Lines{"folder 5", "exists " + log_folder, "make-folder " + log_folder}));
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(WriteQuakeLog, EndsSilentlyWhereAFileIsInTheFoldersPlace) {
  LogRig rig;
  rig.files().Put(log_folder, "a file");
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.log(), "none");
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(WriteQuakeLog, EndsSilentlyWhereAFolderIsInTheFilesPlace) {
  LogRig rig;
  rig.files().PutFolder(log_folder);
  rig.files().PutFolder(log_path);
  rig.add_row("2.0", {"a", "b"});
  rig.write();
  EXPECT_EQ(rig.trace({"append"}), Lines{});
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(WriteQuakeLog, LeavesTheRowsAfterAFaultForTheNextTime) {
  LogRig rig;
  for (const char *magnitude : {"2.0", "2.1", "2.2"})
    rig.add_row(magnitude, {"a", "b"});
  constexpr int second_row = 3;
  constexpr int third_line = 5;
  rig.files().BeforeCall("exists", second_row, [&] { rig.files().Remove(log_path); });
  rig.files().BeforeCall("append", third_line, [&] { rig.files().FailCall(1); });
  rig.write();
  EXPECT_EQ(rig.log(), "2.1 a b\r\n");
  rig.write();
  EXPECT_EQ(rig.log(), "2.1 a b\r\n2.0 a b\r\n2.2 a b\r\n");
}

/// Writes three rows while that call fails, then once more. Returns whether the call has failed.
bool WritesWholeLinesOnly(int failing_call, const std::string &before) {
  LogRig rig;
  const Lines rows = {"2.0 a b", "2.1 a b", "2.2 a b"};
  for (const char *magnitude : {"2.0", "2.1", "2.2"})
    rig.add_row(magnitude, {"a", "b"});
  if (!before.empty()) {
    rig.files().PutFolder(log_folder);
    rig.files().Put(log_path, before);
  }
  rig.files().FailCall(failing_call);
  rig.write();
  const bool has_failed = rig.files().HasFailed();

  std::string possible = before;
  Lines possibilities = {possible};
  for (const std::string &row : rows) {
    if (before.find(row) == std::string::npos)
      possibilities.push_back(possible += row + "\r\n");
  }
  const std::string log = rig.files().ContentOf(log_path).value_or("");
  EXPECT_NE(std::find(possibilities.begin(), possibilities.end(), log), possibilities.end()) << failing_call << log;
  EXPECT_EQ(log == possible, !has_failed) << failing_call;
  EXPECT_EQ(rig.end_status(), std::nullopt) << failing_call;

  rig.write();
  EXPECT_EQ(rig.log(), possible) << "the next time, after the failure of call " << failing_call;
  return has_failed;
}

TEST(WriteQuakeLog, WritesWholeLinesOnlyWhicheverCallFails) {
  for (const char *before : {"", "first\r\n2.1 a b\r\n"}) {
    int calls = 0;
    while (WritesWholeLinesOnly(calls + 1, before))
      ++calls;
    EXPECT_GE(calls, 6) << before;
  }
}

}  // namespace
}  // namespace borvane
