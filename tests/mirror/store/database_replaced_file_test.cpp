#include <QDir>
#include <QFile>
#include <cstdio>
#include <optional>

#include "store/database.h"
#include "support/mirror/databases.h"
#include "support/mirror/report_store.h"
#include "support/mirror/service_under_test.h"
#include "support/mirror/without_rights.h"

// A store's file that is replaced, removed or made unreadable while services have it open.

namespace borvane::mirror {
namespace {

class ReplacedFile : public testing::Test {
 protected:
  ReplacedFile() {
    EXPECT_EQ(service_->Ask("puta&map=A&strout=backed up"), "ok");
    Database database(address_);
    database.Open();
    database.Run("vacuum into '" + backup_ + "'");
    database.Close();
    // So much that the log holds a version of each page of the backup.
    for (int i = 0; i < 60; ++i)
      EXPECT_EQ(service_->Ask("puta&map=" + QByteArray::number(i % 7) + "&strout=" + QByteArray(500, 'x'), Client(i)),
                "ok");
    EXPECT_EQ(service_->Ask("puta&map=A&strout=later"), "ok");
  }

  /// Moves a file over another one, as "mv" does.
  static void Move(const QString &from, const QString &to) {
    EXPECT_EQ(std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()), 0);
  }

  /// That the file holds these reports of map A, and that SQLite finds no fault in it.
  static void ExpectWhole(const QString &file, const QByteArray &reports) {
    Database database({.file = file});
    database.Open();
    EXPECT_EQ(Reports().ReportsOf(database, "A"), reports);
    EXPECT_EQ(database.Row("pragma integrity_check").at(0).toString(), "ok");
  }

  /// An address of a client that has sent nothing yet in this minute.
  const char *Client(int number) {
    client_ = "10.0.1." + QByteArray::number(number);
    return client_.constData();
  }

  QTemporaryDir folder_;
  QByteArray client_;
  const StoreAddress address_ = {.file = folder_.filePath("service.sqlite")};
  const QString backup_ = folder_.filePath("backup.sqlite");
  const QString aside_ = folder_.filePath("aside.sqlite");
  std::optional<ServiceUnderTest> service_{std::in_place, address_};
};

TEST_F(ReplacedFile, IsServedAndWrittenAsItIsAfterABackupWasMovedOverTheStore) {
  Move(backup_, address_.file);
  EXPECT_EQ(service_->Ask("geta&map=A"), "backed up\n");
  EXPECT_EQ(service_->Ask("geta&map=1"), "");
  EXPECT_EQ(service_->Ask("puta&map=A&strout=new"), "ok");
  ExpectWhole(address_.file, "backed up\nnew\n");
  EXPECT_EQ(service_->lines(), QStringList());
}

TEST_F(ReplacedFile, IsWrittenFirstAfterABackupWasMovedOverTheStore) {
  Move(backup_, address_.file);
  EXPECT_EQ(service_->Ask("puta&map=A&strout=new"), "ok");
  EXPECT_EQ(service_->Ask("geta&map=A"), "backed up\nnew\n");
  ExpectWhole(address_.file, "backed up\nnew\n");
}

TEST_F(ReplacedFile, IsLeftAloneWhenTheServiceEndsWithoutAFurtherJob) {
  Move(backup_, address_.file);
  service_.reset();
  ExpectWhole(address_.file, "backed up\n");
}

TEST_F(ReplacedFile, LeavesTheOldOneWholeUnderItsNewName) {
  Move(address_.file, aside_);
  Move(backup_, address_.file);
  EXPECT_EQ(service_->Ask("geta&map=A"), "backed up\n");
  ExpectWhole(aside_, "backed up\nlater\n");
}

TEST_F(ReplacedFile, IsNoticedByEachMirrorThatSharesTheStore) {
  ServiceUnderTest other(address_);
  EXPECT_EQ(other.Ask("geta&map=A"), "backed up\nlater\n");
  Move(backup_, address_.file);
  EXPECT_EQ(service_->Ask("puta&map=A&strout=one"), "ok");
  EXPECT_EQ(other.Ask("puta&map=A&strout=two"), "ok");
  EXPECT_EQ(service_->Ask("puta&map=A&strout=three"), "ok");
  EXPECT_EQ(other.Ask("geta&map=A"), "backed up\none\ntwo\nthree\n");
  ExpectWhole(address_.file, "backed up\none\ntwo\nthree\n");
  EXPECT_EQ(service_->lines() + other.lines(), QStringList());
}

TEST_F(ReplacedFile, GetsWhatWasBeingWrittenWhenItCame) {
  Database database(address_);
  database.Open();
  MigrateToNewest(database, reports_schema);
  database.Begin();
  Reports().AddReport(database, "A", "lost", 1);
  Move(backup_, address_.file);
  EXPECT_THROW(database.Commit(), StoreFailure) << "the new file does not have it";
  database.Close();
  ExpectWhole(address_.file, "backed up\n");
}

TEST_F(ReplacedFile, MayComeAfterTheOldOneWasRemoved) {
  EXPECT_TRUE(QFile::remove(address_.file));
  EXPECT_EQ(service_->Ask("geta&map=A"), "");
  Move(backup_, address_.file);
  EXPECT_EQ(service_->Ask("geta&map=A"), "backed up\n");
  EXPECT_TRUE(QFile::remove(address_.file));
  EXPECT_EQ(service_->Ask("puta&map=A&strout=new"), "ok");
  ExpectWhole(address_.file, "new\n");
}

TEST_F(ReplacedFile, MayBringALogOfItsOwn) {
  const StoreAddress busy = {.file = folder_.filePath("busy.sqlite")};
  ReportStore store(busy);
  store.Change([&store] { store.AddReport("A", "in the log", 1); });
  ASSERT_GT(QFile(busy.file + "-wal").size(), 0);
  for (const char *end : {"-wal", ""}) {
    const QString copy = folder_.filePath("copy.sqlite") + end;
    EXPECT_TRUE(QFile::copy(busy.file + end, copy));
    Move(copy, address_.file + end);
  }
  EXPECT_EQ(service_->Ask("geta&map=A"), "in the log\n");
  EXPECT_EQ(service_->Ask("puta&map=A&strout=new"), "ok");
  ExpectWhole(address_.file, "in the log\nnew\n");
}

TEST_F(ReplacedFile, LeavesTheLogOfAFileThatASymbolicLinkNoLongerNames) {
  const QString link = folder_.filePath("link.sqlite");
  ASSERT_TRUE(QFile::link(address_.file, link));
  ServiceUnderTest service(StoreAddress{.file = link});
  EXPECT_EQ(service.Ask("puta&map=A&strout=by the link"), "ok");
  ASSERT_TRUE(QFile::remove(link) && QFile::link(backup_, link));
  EXPECT_EQ(service.Ask("geta&map=A"), "backed up\n");
  EXPECT_EQ(service_->Ask("geta&map=A"), "backed up\nlater\nby the link\n");
}

/// The same with a further service, which has no rights but those that everybody has.
class ReplacedFileWithoutRights : public ReplacedFile {
 protected:
  ReplacedFileWithoutRights() {
    QFile::setPermissions(folder_.path(), everything);
    for (const char *end : {"", "-wal", "-shm"})
      QFile::setPermissions(address_.file + end, everything);
    const WithoutRights without_rights;
    stranger_.emplace(address_);
    EXPECT_EQ(stranger_->Ask("geta&map=A"), "backed up\nlater\n");
  }

  static constexpr QFile::Permissions everything = QFile::Permissions(0x7777);
  std::optional<ServiceUnderTest> stranger_;
};

TEST_F(ReplacedFileWithoutRights, IsReportedOnceUntilItMayBeRead) {
  QFile::setPermissions(backup_, {});
  Move(backup_, address_.file);
  for (const char *command : {"geta&map=A", "puta&map=A&strout=x", "geta&map=A"})
    EXPECT_EQ(stranger_->Ask(command), "503") << command;
  EXPECT_EQ(stranger_->lines().size(), 1);
  EXPECT_TRUE(stranger_->lines().value(0).contains("unable to open database file"))
      << stranger_->lines().value(0).toStdString();
  QFile::setPermissions(address_.file, everything);
  EXPECT_EQ(stranger_->AskUntilItWorks("puta&map=A&strout=new"), "ok");
  ExpectWhole(address_.file, "backed up\nnew\n");
}

TEST_F(ReplacedFileWithoutRights, StaysInUseWhenOnlyItsPermissionsChange) {
  QFile::setPermissions(address_.file, {});
  EXPECT_EQ(stranger_->Ask("geta&map=A"), "backed up\nlater\n");
  EXPECT_EQ(stranger_->Ask("puta&map=A&strout=new"), "ok");
  QFile::setPermissions(address_.file, everything);
  ExpectWhole(address_.file, "backed up\nlater\nnew\n");
}

TEST_F(ReplacedFileWithoutRights, IsReportedOnceWhileItsFolderMayNotBeLookedInto) {
  QFile::setPermissions(folder_.path(), {});
  for (const char *command : {"geta&map=A", "puta&map=A&strout=x"})
    EXPECT_EQ(stranger_->Ask(command), "503") << command;
  QFile::setPermissions(folder_.path(), everything);
  EXPECT_EQ(stranger_->lines().size(), 1);
  EXPECT_EQ(stranger_->AskUntilItWorks("puta&map=A&strout=new"), "ok");
  ExpectWhole(address_.file, "backed up\nlater\nnew\n");
}

}  // namespace
}  // namespace borvane::mirror
