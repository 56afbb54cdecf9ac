#include "store/migrations.h"

#include <QFile>

#include "service/reports.h"
#include "support/mirror/databases.h"
#include "support/mirror/service_under_test.h"

namespace borvane::mirror {
namespace {

class MigrationOnEveryDatabase : public OnEveryDatabase {
 protected:
  /// Makes the tables of an old version, with what was kept in them.
  void MakeOldStore(int version) const {
    const char *kind = GetParam() == DatabaseKind::SQLite ? "sqlite" : "postgresql";
    QFile file(QString(BORVANE_CASES "/store/%1_%2.sql").arg(kind).arg(version));
    ASSERT_TRUE(file.open(QFile::ReadOnly)) << file.fileName().toStdString();
    database_.Execute(QString::fromUtf8(file.readAll()));
  }

  int Version() const {
    Database database(database_.Address());
    database.Open();
    return database.Row("select number from version").at(0).toInt();
  }
};
INSTANTIATE_TEST_SUITE_P(Migration, MigrationOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(MigrationOnEveryDatabase, MakesTheNewestTablesInAnEmptyDatabase) {
  ServiceUnderTest service(database_.Address());
  EXPECT_EQ(service.Ask("add&macid=1"), "ok");
  EXPECT_EQ(Version(), reports_schema.newest);
}

TEST_P(MigrationOnEveryDatabase, BringsTheFirstVersionUpToDateAndLosesNothing) {
  MakeOldStore(1);
  EXPECT_EQ(Version(), 1);
  ServiceUnderTest service(database_.Address());
  EXPECT_EQ(service.Ask("geta&map=Parkfield, CA"), "235|A|35|3.5|1|0|93451\n235|B|||0|0|\x80\xff\n");
  EXPECT_EQ(service.Ask("geta&map=Ca\xf1on"), "\n");
  EXPECT_EQ(service.Ask("whoson&macid=1&AppVersion= 235"), "2") << "client 534187 was seen at the time of the clock";
  EXPECT_EQ(Version(), reports_schema.newest);

  EXPECT_EQ(service.Ask("puta&map=Parkfield, CA&strout=new"), "ok");
  EXPECT_EQ(service.Ask("putb&map=Parkfield, CA&strout=detail"), "ok");
  EXPECT_EQ(service.Ask("puta&map=elsewhere&strout=new"), "ok");
  EXPECT_EQ(service.Ask("geta&map=Parkfield, CA"), "235|A|35|3.5|1|0|93451\n235|B|||0|0|\x80\xff\nnew\n");
  EXPECT_EQ(service.lines(), QStringList());
}

TEST_P(MigrationOnEveryDatabase, LeavesAnOldStoreAsItWasWhenAStepFails) {
  MakeOldStore(1);
  // What the second step makes is there already.
  database_.Execute("create table detail (x int);\n");
  ServiceUnderTest service(database_.Address());
  EXPECT_EQ(service.Ask("geta&map=Parkfield, CA"), "503");
  EXPECT_EQ(Version(), 1);
  EXPECT_EQ(service.lines().size(), 1);
}

TEST_P(MigrationOnEveryDatabase, IsMadeOnceByTwoServicesThatStartTogether) {
  MakeOldStore(1);
  ServiceUnderTest one(database_.Address());
  ServiceUnderTest other(database_.Address());
  one.AskLater("add&macid=1");
  EXPECT_EQ(other.Ask("add&macid=2"), "ok");
  EXPECT_EQ(one.Ask("whoson&macid=1&AppVersion= 235"), "2");
  EXPECT_EQ(Version(), reports_schema.newest);
}

}  // namespace
}  // namespace borvane::mirror
