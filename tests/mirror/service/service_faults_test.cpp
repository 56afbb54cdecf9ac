#include <QDir>
#include <QFile>
#include <QThread>

#include "service/reports.h"
#include "support/mirror/databases.h"
#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/service_under_test.h"
#include "support/mirror/without_rights.h"

// Stores that cannot be used, for whatever reason: the service says so, answers with failures, and works again as soon
// as it can.

namespace borvane::mirror {
namespace {

void ExpectNothingWorks(ServiceUnderTest &service) {
  for (const char *command : {"puta&map=A&strout=x", "geta&map=A", "setonline&macid=1&AppVersion=235",
                              "whoson&macid=1&AppVersion= 235", "add&macid=1"})
    EXPECT_EQ(service.Ask(command), "503") << command;
  EXPECT_TRUE(service.Get("/borvane/").body.contains("not known at the moment"));
  EXPECT_EQ(service.Get("/borvane/version.txt").body, "235");
}

class FaultsOnEveryDatabase : public OnEveryDatabase {
 protected:
  ServiceUnderTest service_{database_.Address()};
};
INSTANTIATE_TEST_SUITE_P(StoreFaults, FaultsOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(FaultsOnEveryDatabase, RefusesAStoreOfANewerVersion) {
  EXPECT_EQ(service_.Ask("puta&map=A&strout=kept"), "ok");
  const QString newer = QString::number(reports_schema.newest + 1);
  database_.Execute("update version set number = " + newer + ";\n");
  ServiceUnderTest older(database_.Address());
  ExpectNothingWorks(older);
  ASSERT_EQ(older.lines().size(), 1);
  EXPECT_TRUE(
      older.lines()[0].contains("created by a newer borvane-mirror (version " + newer + " of its tables; this one"))
      << older.lines()[0].toStdString();
  database_.Execute("update version set number = " + QString::number(reports_schema.newest) + ";\n");
  EXPECT_EQ(older.AskUntilItWorks("geta&map=A"), "kept\n");
}

TEST_P(FaultsOnEveryDatabase, RefusesTheTablesOfAnotherProgram) {
  database_.Execute(GetParam() == DatabaseKind::SQLite
                        ? "create table pupils (name text);\n"
                        : "create schema borvane;\ncreate table borvane.pupils (name text);\n");
  ExpectNothingWorks(service_);
  ASSERT_EQ(service_.lines().size(), 1);
  EXPECT_TRUE(service_.lines()[0].contains("holds the tables of another program")) << service_.lines()[0].toStdString();
}

TEST_P(FaultsOnEveryDatabase, LogsNothingOfAReport) {
  EXPECT_EQ(service_.Ask("puta&map=secret map&strout=x"), "ok");
  // PostgreSQL quotes the row that broke a rule, in a further line.
  database_.Execute(GetParam() == DatabaseKind::SQLite
                        ? "create trigger short before insert on report when length(new.record) > 3 "
                          "begin select raise(abort, 'too long'); end;\n"
                        : "alter table report add constraint short check (length(record) <= 3);\n");
  EXPECT_EQ(service_.Ask("puta&map=secret map&strout=secret record"), "503");
  ASSERT_EQ(service_.lines().size(), 1);
  const QString line = service_.lines()[0];
  EXPECT_TRUE(line.contains("too long") || line.contains("violates check constraint \"short\"")) << line.toStdString();
  EXPECT_FALSE(line.contains("secret") || line.contains(QByteArray("secret").toHex())) << line.toStdString();
  EXPECT_FALSE(line.contains("p@ss")) << line.toStdString();
  EXPECT_EQ(service_.Ask("puta&map=secret map&strout=y"), "ok");
}

class FileFaults : public testing::Test {
 protected:
  QTemporaryDir folder_;
  const StoreAddress address_ = {.file = folder_.filePath("service.sqlite")};

  QByteArray FileContent() const {
    QFile file(address_.file);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }
  void Execute(const QStringList &statements) const {
    Database database(address_);
    database.Open();
    for (const QString &statement : statements)
      database.Run(statement);
  }
  /// The last report that came, whatever else of the file cannot be read.
  QByteArray NewestReport() const {
    Database database(address_);
    database.Open();
    return database.Row("select record from report order by map desc, number desc limit 1").value(0).toByteArray();
  }
  void RemoveFile() const {
    for (const char *end : {"", "-wal", "-shm"})
      QFile::remove(address_.file + end);
  }
  void WriteFile(const QByteArray &content) const {
    QFile file(address_.file);
    EXPECT_TRUE(file.open(QFile::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
  }
};

TEST_F(FileFaults, LeavesAFileThatIsNoStoreAsItIs) {
  const QByteArray text = "Dear diary, today the ground shook.\n" + QByteArray(5'000, '.');
  WriteFile(text);
  ServiceUnderTest service(address_);
  ExpectNothingWorks(service);
  ASSERT_EQ(service.lines().size(), 1);
  EXPECT_TRUE(service.lines()[0].contains("not a database")) << service.lines()[0].toStdString();
  EXPECT_EQ(FileContent(), text);
}

TEST_F(FileFaults, LeavesADatabaseOfAnotherProgramAsItIs) {
  Execute({"create table pupils (name text)", "pragma journal_mode = delete"});
  const QByteArray content = FileContent();
  ServiceUnderTest service(address_);
  ExpectNothingWorks(service);
  EXPECT_EQ(FileContent(), content);
}

TEST_F(FileFaults, LeavesAStoreOfANewerVersionAsItIs) {
  EXPECT_EQ(ServiceUnderTest(address_).Ask("puta&map=A&strout=kept"), "ok");
  Execute({"update version set number = number + 1", "pragma journal_mode = delete"});
  const QByteArray content = FileContent();
  ServiceUnderTest service(address_);
  ExpectNothingWorks(service);
  EXPECT_EQ(FileContent(), content);
}

TEST_F(FileFaults, KeepNothingInAFileThatWasRemoved) {
  ServiceUnderTest service(address_);
  EXPECT_EQ(service.Ask("puta&map=A&strout=before"), "ok");
  RemoveFile();
  EXPECT_EQ(service.Ask("geta&map=A"), "");
  EXPECT_EQ(service.Ask("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(ServiceUnderTest(address_).Ask("geta&map=A"), "after\n");
}

TEST_F(FileFaults, KeepNothingInAFileThatWasReplaced) {
  ServiceUnderTest service(address_);
  EXPECT_EQ(service.Ask("puta&map=A&strout=before"), "ok");
  RemoveFile();
  ServiceUnderTest other(address_);
  EXPECT_EQ(other.Ask("puta&map=A&strout=from the other"), "ok");
  EXPECT_EQ(service.Ask("geta&map=A"), "from the other\n");
  EXPECT_EQ(service.Ask("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(other.Ask("geta&map=A"), "from the other\nafter\n");
  EXPECT_EQ(service.lines() + other.lines(), QStringList());
}

TEST_F(FileFaults, SurvivesEachDamagedPage) {
  constexpr qsizetype page_size = 4'096;
  {
    ServiceUnderTest service(address_);
    for (int i = 0; i < 30; ++i)
      EXPECT_EQ(service.Ask("puta&map=A&strout=" + QByteArray(600, 'x')), "ok");
    service.Ask("setonline&macid=1&AppVersion=235");
  }
  const QByteArray good = FileContent();
  ASSERT_GT(good.size(), 8 * page_size);
  int failures = 0;
  int kept = 0;
  for (qsizetype page = 0; page * page_size < good.size(); ++page) {
    RemoveFile();
    WriteFile(QByteArray(good).replace(page * page_size, page_size, QByteArray(page_size, '\xa5')));
    ServiceUnderTest service(address_);
    for (const char *command : {"geta&map=A", "whoson&macid=1&AppVersion= 235", "add&macid=1"})
      failures += service.Ask(command) == "503" ? 1 : 0;
    const bool was_taken = service.Ask("puta&map=A&strout=new") == "ok";
    EXPECT_EQ(service.Get("/borvane/version.txt").body, "235");
    EXPECT_EQ(service.Get("/borvane/").status, 200);
    EXPECT_LE(service.lines().size(), 8);
    if (was_taken) {
      ++kept;
      EXPECT_EQ(NewestReport(), "new") << "page " << page;
    }
  }
  EXPECT_GT(failures, 10);
  EXPECT_GT(kept, 1);
}

TEST_F(FileFaults, FailsWhileAnotherProgramHasTheFileLocked) {
  ServiceUnderTest service(address_);
  EXPECT_EQ(service.Ask("puta&map=A&strout=before"), "ok");
  Database other(address_);
  other.Open();
  other.Begin();
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(service.Ask("puta&map=A&strout=meanwhile"), "503");
  EXPECT_EQ(service.Ask("geta&map=A"), "before\n");
  EXPECT_EQ(service.lines().size(), 1);
  EXPECT_TRUE(service.lines().value(0).contains("database is locked")) << service.lines().value(0).toStdString();
  other.Commit();
  EXPECT_EQ(service.AskUntilItWorks("puta&map=A&strout=after"), "ok");
  EXPECT_EQ(service.Ask("geta&map=A"), "before\nafter\n");
  EXPECT_EQ(service.lines().size(), 2);
}

// For everyone. This user may be of the group that owns the file.
constexpr auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr auto searchable = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

TEST_F(FileFaults, FailsInAFolderThatMayNotBeWritten) {
  QFile::setPermissions(folder_.path(), readable | searchable);
  {
    const WithoutRights without_rights;
    ServiceUnderTest service(address_);
    EXPECT_EQ(service.Ask("puta&map=A&strout=x"), "503");
    EXPECT_EQ(service.Ask("setonline&macid=1&AppVersion=235"), "503");
    EXPECT_EQ(service.Ask("geta&map=A"), "") << "there is nothing to be read yet";
    ASSERT_EQ(service.lines().size(), 1);
    EXPECT_TRUE(service.lines()[0].contains("the file cannot be created: ")) << service.lines()[0].toStdString();
  }
  QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(FileFaults, FailsInAFolderThatMayNotBeLookedInto) {
  QFile::setPermissions(folder_.path(), {});
  {
    const WithoutRights without_rights;
    ServiceUnderTest service(address_);
    EXPECT_EQ(service.Ask("geta&map=A"), "503") << "there may be something to be read";
    EXPECT_EQ(service.Ask("puta&map=A&strout=x"), "503");
    EXPECT_EQ(service.lines().size(), 1);
    EXPECT_TRUE(service.lines().value(0).contains("unable to open database file"))
        << service.lines().value(0).toStdString();
  }
  QFile::setPermissions(folder_.path(), searchable | readable | QFile::WriteOwner);
}

TEST_F(FileFaults, ReadsAFileThatMayNotBeWritten) {
  EXPECT_EQ(ServiceUnderTest(address_).Ask("puta&map=A&strout=before"), "ok");
  QFile::setPermissions(address_.file, readable);
  QFile::setPermissions(folder_.path(), readable | searchable);
  const QByteArray content = FileContent();
  {
    const WithoutRights without_rights;
    ServiceUnderTest service(address_);
    EXPECT_EQ(service.Ask("geta&map=A"), "before\n");
    EXPECT_EQ(service.lines(), QStringList());
    EXPECT_EQ(service.Ask("puta&map=A&strout=x"), "503");
    EXPECT_EQ(service.Ask("geta&map=A"), "before\n");
    EXPECT_EQ(service.lines().size(), 1);
  }
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("service.sqlite"));
  QFile::setPermissions(folder_.path(), readable | searchable | QFile::WriteOwner);
  EXPECT_EQ(FileContent(), content);
}

TEST_F(FileFaults, ReadsAFileThatOnlyAnotherMayWrite) {
  ServiceUnderTest owner(address_);
  EXPECT_EQ(owner.Ask("puta&map=A&strout=before"), "ok");
  for (const QString &file : QDir(folder_.path()).entryList(QDir::Files))
    QFile::setPermissions(folder_.filePath(file), readable);
  QFile::setPermissions(folder_.path(), readable | searchable);
  {
    const WithoutRights without_rights;
    ServiceUnderTest service(address_);
    EXPECT_EQ(service.Ask("geta&map=A"), "before\n") << "which is in the log beside the file";
    EXPECT_EQ(service.Ask("puta&map=A&strout=x"), "503");
    EXPECT_EQ(service.Ask("geta&map=A"), "before\n");
  }
  QFile::setPermissions(folder_.path(), readable | searchable | QFile::WriteOwner);
  EXPECT_EQ(owner.Ask("puta&map=A&strout=after"), "ok");
}

}  // namespace
}  // namespace borvane::mirror
