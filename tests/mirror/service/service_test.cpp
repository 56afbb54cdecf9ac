#include "service/service.h"

#include <QDir>
#include <QFileInfo>
#include <QXmlStreamReader>

#include "support/mirror/databases.h"
#include "support/mirror/run_until.h"
#include "support/mirror/service_under_test.h"

namespace borvane::mirror {
namespace {

constexpr qint64 minute = 60'000;

class ServiceOnEveryDatabase : public OnEveryDatabase {
 protected:
  ServiceUnderTest service_{database_.Address()};
};
INSTANTIATE_TEST_SUITE_P(Service, ServiceOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(ServiceOnEveryDatabase, CountsTheClientsOfTheLastFifteenMinutes) {
  EXPECT_EQ(service_.Ask("setonline&macid=1&AppVersion=235"), "ok");
  service_.Pass(minute);
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "2");
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "2");
  service_.Pass(14 * minute);
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "2");
  service_.Pass(1);
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "1") << "client 1 was seen more than 15 minutes ago";
}

TEST_P(ServiceOnEveryDatabase, CountsAClientWhoseClockWasAhead) {
  EXPECT_EQ(service_.Ask("setonline&macid=1&AppVersion=235"), "ok");
  service_.Pass(-15 * minute);
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "2");
  service_.Pass(-1);
  EXPECT_EQ(service_.Ask("whoson&macid=2&AppVersion= 235"), "1");
}

TEST_P(ServiceOnEveryDatabase, NotesTheVersionWithoutTheBlankInFrontOfIt) {
  service_.Ask("whoson&macid=2&AppVersion= 235");
  service_.Ask("setonline&macid=3&AppVersion=235");
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select count(*) from client where version = ?", {QByteArray("235")}).at(0).toInt(), 2);
}

TEST_P(ServiceOnEveryDatabase, CountsRuns) {
  EXPECT_EQ(service_.Ask("add&macid=7"), "ok");
  EXPECT_EQ(service_.Ask("add&macid=7"), "ok");
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select runs from client where macid = ?", {QByteArray("7")}).at(0).toInt(), 2);
  EXPECT_EQ(service_.Ask("whoson&macid=8&AppVersion= 235"), "1") << "a run is not a sight";
}

TEST_P(ServiceOnEveryDatabase, KeepsAThousandReportsOfAMap) {
  QByteArray expected;
  for (int i = 0; i < 1'002; ++i) {
    const QByteArray record = "235|20240101|" + QByteArray::number(i);
    EXPECT_EQ(service_.Ask("puta&map=A&strout=" + record, qPrintable(QString("10.0.1.%1").arg(i / 30))), "ok");
    if (i >= 2)
      expected += record + '\n';
  }
  EXPECT_EQ(service_.Ask("geta&map=A"), expected);
}

TEST_P(ServiceOnEveryDatabase, KeepsTheAnswersAfterAReport) {
  EXPECT_EQ(service_.Ask("putb&map=A&strout=235||35|95045|x"), "ok");
  EXPECT_EQ(service_.Ask("putc&zip=95045&map=A&strout=235||35|95045|y"), "ok");
  EXPECT_EQ(service_.Ask("putc&map=A&strout=z"), "ok");
  Database database(database_.Address());
  database.Open();
  QByteArrayList kept;
  database.ForEachRow("select record from detail where map = ? and zip is null", {QByteArray("A")},
                      [&kept](const QSqlQuery &row) { return kept.append(row.value(0).toByteArray()), true; });
  EXPECT_EQ(kept, QByteArrayList{QByteArray("235||35|95045|x")});
  EXPECT_EQ(database.Row("select record from detail where zip = ?", {QByteArray("95045")}).at(0).toByteArray(),
            "235||35|95045|y");
  EXPECT_EQ(database.Row("select record from detail where zip = ?", {QByteArray("")}).at(0).toByteArray(), "z");
  EXPECT_EQ(service_.Ask("geta&map=A"), "") << "they are no reports";
}

/// A service on a file that does not exist yet.
class ServiceTest : public testing::Test {
 protected:
  QTemporaryDir folder_;
  QString file_ = folder_.filePath("not there yet/service.sqlite");
  ServiceUnderTest service_{StoreAddress{.file = file_}};
};

TEST_F(ServiceTest, GivesNoReportsWhereThereAreNone) {
  EXPECT_EQ(service_.Ask("puta&map=A&strout=x"), "ok");
  const Answer answer = service_.Get("/cgi-bin/borvane/control.pl?cmd=geta&map=B");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.type, "text/plain; charset=windows-1252");
  EXPECT_EQ(answer.body, "");
}

TEST_F(ServiceTest, LosesWhatFollowsAnAmpersandInAReport) {
  EXPECT_EQ(service_.Ask("puta&map=A&strout=235|felt & heard&map=B"), "ok");
  EXPECT_EQ(service_.Ask("geta&map=A"), "235|felt \n");
  EXPECT_EQ(service_.Ask("geta&map=B"), "");
}

TEST_F(ServiceTest, TakesMissingKeysForEmptyOnes) {
  EXPECT_EQ(service_.Ask("puta&strout=x"), "ok");
  EXPECT_EQ(service_.Ask("geta"), "x\n");
  EXPECT_EQ(service_.Ask("setonline"), "ok");
  EXPECT_EQ(service_.Ask("add"), "ok");
  EXPECT_EQ(service_.Ask("whoson&macid=1"), "2");
}

TEST_F(ServiceTest, LetsThirtyReportsAMinutePassFromOneAddress) {
  for (int i = 0; i < 30; ++i)
    EXPECT_EQ(service_.Ask("puta&map=A&strout=x", "10.0.0.1"), "ok");
  EXPECT_EQ(service_.Ask("puta&map=A&strout=x", "10.0.0.1"), "429");
  EXPECT_EQ(service_.Ask("puta&map=A&strout=x", "10.0.0.2"), "ok");
  EXPECT_EQ(service_.Ask("geta&map=A", "10.0.0.1"), QByteArray("x\n").repeated(31));
  EXPECT_EQ(service_.Ask("whoson&macid=1&AppVersion= 235", "10.0.0.1"), "1");
  service_.Pass(minute);
  EXPECT_EQ(service_.Ask("puta&map=A&strout=x", "10.0.0.1"), "ok");
}

TEST_F(ServiceTest, TakesTheAnswersThatFollowSixtyReports) {
  for (int i = 0; i < 60; ++i)
    for (const char *command : {"putb&map=A&strout=x", "putc&zip=1&map=A&strout=x"})
      EXPECT_EQ(service_.Ask(command, "10.0.0.1"), "ok");
  EXPECT_EQ(service_.Ask("putb&map=A&strout=x", "10.0.0.1"), "429");
  EXPECT_EQ(service_.Ask("putc&map=A&strout=x", "10.0.0.1"), "429");
  EXPECT_EQ(service_.Ask("puta&map=A&strout=x", "10.0.0.1"), "ok") << "reports have a limit of their own";
  EXPECT_EQ(service_.Ask("putb&map=A&strout=x", "10.0.0.2"), "ok");
}

TEST(Service, LimitsThePresenceThatOneAddressReports) {
  const EmptyDatabase empty(DatabaseKind::SQLite);
  ServiceUnderTest service(empty.Address(), {.presence_a_minute = 3});
  EXPECT_EQ(service.Ask("setonline&macid=1&AppVersion=235", "10.0.0.1"), "ok");
  EXPECT_EQ(service.Ask("whoson&macid=1&AppVersion= 235", "10.0.0.1"), "1");
  EXPECT_EQ(service.Ask("add&macid=1", "10.0.0.1"), "ok");
  for (const char *command : {"setonline&macid=2&AppVersion=235", "whoson&macid=2&AppVersion= 235", "add&macid=2"})
    EXPECT_EQ(service.Ask(command, "10.0.0.1"), "429") << command;
  EXPECT_EQ(service.Ask("puta&map=A&strout=x", "10.0.0.1"), "ok") << "reports have a limit of their own";
  EXPECT_EQ(service.Ask("whoson&macid=3&AppVersion= 235", "10.0.0.2"), "2");
  service.Pass(minute);
  EXPECT_EQ(service.Ask("add&macid=1", "10.0.0.1"), "ok");
}

TEST_F(ServiceTest, ForgetsEachAddressAMinuteAfterItsLastRequestThoughNobodyAsksAnyMore) {
  EXPECT_FALSE(service_.KeepsAddresses());
  for (const char *command : {"setonline&macid=1&AppVersion=235", "puta&map=A&strout=x", "putb&map=A&strout=x"}) {
    EXPECT_EQ(service_.Ask(command), "ok");
    service_.Pass(minute - 1);
    RunFor(50);
    EXPECT_TRUE(service_.KeepsAddresses()) << command;
    service_.Pass(1);
    EXPECT_TRUE(RunUntil([this] { return !service_.KeepsAddresses(); })) << command;
  }
}

TEST_F(ServiceTest, LetsAClassroomBehindOneAddressReportItsPresence) {
  for (int i = 0; i < 600; ++i)
    EXPECT_EQ(service_.Ask("add&macid=" + QByteArray::number(i % 30)), "ok");
  EXPECT_EQ(service_.Ask("add&macid=1"), "429");
}

TEST_F(ServiceTest, AnswersNoWebPageOfAnotherSite) {
  for (const char *target :
       {"/cgi-bin/borvane/control.pl?cmd=puta&map=A&strout=x", "/cgi-bin/borvane/control.pl?cmd=geta&map=A",
        "/cgi-bin/borvane/control.pl?cmd=setonline&macid=1&AppVersion=235", "/borvane/version.txt", "/borvane/"}) {
    for (const Request &request : {Request{.method = "GET", .target = target, .has_origin = true},
                                   Request{.method = "GET", .target = target, .fetch_site = "cross-site"},
                                   Request{.method = "GET", .target = target, .host = "evil.example:17650"}}) {
      const Answer answer = service_.Send(request);
      EXPECT_EQ(answer.status, 403) << target;
      EXPECT_TRUE(answer.body.contains('<')) << "which the monitor takes for a failure";
    }
  }
  EXPECT_FALSE(QFileInfo::exists(file_)) << "and keeps nothing of it";
}

TEST_F(ServiceTest, RefusesNamesLongerThanAnyMap) {
  EXPECT_EQ(service_.Ask("puta&map=" + QByteArray(1'000, 'm') + "&strout=x"), "ok");
  EXPECT_EQ(service_.Ask("geta&map=" + QByteArray(1'000, 'm')), "x\n");
  for (const char *command : {"puta", "geta"})
    EXPECT_EQ(service_.Ask(command + QByteArray("&map=") + QByteArray(1'001, 'm') + "&strout=x"), "400") << command;
}

TEST_F(ServiceTest, RefusesReportsThatNoMonitorCouldRead) {
  for (const QByteArray &record : {QByteArray(11, '|'), QByteArray(1'000, 'x'), QByteArray("|")})
    EXPECT_EQ(service_.Ask("puta&map=A&strout=" + record), "ok") << record.constData();
  for (const QByteArray &record : {QByteArray(12, '|'), QByteArray(1'001, 'x'), QByteArray()})
    EXPECT_EQ(service_.Ask("puta&map=A&strout=" + record), "400") << record.constData();
  EXPECT_EQ(service_.Ask("puta&map=A"), "400");
  EXPECT_EQ(service_.Ask("geta&map=A").count('\n'), 3);
}

TEST_F(ServiceTest, RefusesNumbersAndVersionsLongerThanAnyClients) {
  const QByteArray most(64, '9');
  for (const char *command : {"setonline", "whoson", "add"}) {
    EXPECT_NE(service_.Ask(command + QByteArray("&macid=") + most + "&AppVersion=" + most), "400") << command;
    EXPECT_EQ(service_.Ask(command + QByteArray("&macid=") + most + "9&AppVersion=235"), "400") << command;
    EXPECT_EQ(service_.Ask(command + QByteArray("&macid=1&AppVersion=") + most + "9"), "400") << command;
  }
}

TEST_F(ServiceTest, RefusesACommandThatItDoesNotKnow) {
  for (const char *command : {"", "putd", "PUTA", "get", "puta ", "ok"})
    EXPECT_EQ(service_.Ask(command + QByteArray("&map=A&strout=x")), "400") << command;
  EXPECT_EQ(service_.Get("/cgi-bin/borvane/control.pl").status, 400);
  EXPECT_FALSE(QFileInfo::exists(file_)) << "and keeps nothing of it";
}

TEST_F(ServiceTest, ChangesNothingForHead) {
  EXPECT_EQ(service_.Get("/cgi-bin/borvane/control.pl?cmd=puta&map=A&strout=x", "10.0.0.1", "HEAD").status, 405);
  EXPECT_EQ(service_.Ask("geta&map=A"), "");
}

TEST_F(ServiceTest, ReportsTheNewestVersionInDigits) {
  const Answer answer = service_.Get("/borvane/version.txt");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.type, "text/plain; charset=windows-1252");
  EXPECT_EQ(answer.body, "235");
}

TEST_F(ServiceTest, BeginsItsStoreWithTheFirstChange) {
  EXPECT_EQ(service_.Ask("geta&map=A"), "");
  service_.Get("/borvane/");
  EXPECT_FALSE(QFileInfo(file_).dir().exists());
  EXPECT_EQ(service_.Ask("setonline&macid=1&AppVersion=235"), "ok");
  EXPECT_TRUE(QFileInfo::exists(file_));
}

TEST_F(ServiceTest, KeepsItsStoreFromOtherUsers) {
  service_.Ask("setonline&macid=1&AppVersion=235");
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  for (const QString &path : {file_, file_ + "-wal", QFileInfo(file_).path()}) {
    ASSERT_TRUE(QFileInfo::exists(path)) << path.toStdString();
    EXPECT_EQ(QFileInfo(path).permissions() & others, 0) << path.toStdString();
  }
}

TEST_F(ServiceTest, BeginsANewStoreWhenTheFileWasRemoved) {
  EXPECT_EQ(service_.Ask("puta&map=A&strout=old"), "ok");
  EXPECT_TRUE(QFile::remove(file_));
  EXPECT_EQ(service_.Ask("puta&map=A&strout=new"), "ok");
  EXPECT_EQ(service_.Ask("geta&map=A"), "new\n");
  ServiceUnderTest next(StoreAddress{.file = file_});
  EXPECT_EQ(next.Ask("geta&map=A"), "new\n");
}

TEST_F(ServiceTest, DescribesBorvaneToPeople) {
  EXPECT_TRUE(service_.Get("/borvane/").body.contains("0 users are online."));
  service_.Ask("setonline&macid=1&AppVersion=235");
  EXPECT_TRUE(service_.Get("/borvane/").body.contains("1 user is online."));
  service_.Ask("setonline&macid=2&AppVersion=235");
  const Answer page = service_.Get("/borvane/index.html");
  EXPECT_EQ(page.status, 200);
  EXPECT_EQ(page.type, "text/html; charset=windows-1252");
  EXPECT_TRUE(page.body.contains("<h1>Borvane</h1>"));
  EXPECT_TRUE(page.body.contains("<strong>2.3.5</strong>"));
  EXPECT_TRUE(page.body.contains("2 users are online."));
}

TEST_F(ServiceTest, ListsTheProductsWithoutTheStore) {
  const Answer page = service_.Get("/products.html");
  EXPECT_EQ(page.status, 200);
  EXPECT_EQ(page.type, "text/html; charset=windows-1252");
  EXPECT_TRUE(page.body.contains("<h1>Products</h1>"));
  EXPECT_TRUE(page.body.contains("<a href=\"/borvane/\">Borvane</a>"));
  EXPECT_FALSE(QFileInfo::exists(file_));
}

TEST_F(ServiceTest, WritesItsPagesWithEveryElementClosed) {
  for (const char *target : {"/borvane/", "/products.html"}) {
    const QByteArray page = service_.Get(target).body;
    ASSERT_TRUE(page.startsWith("<!DOCTYPE html><html lang=\"en\">")) << target;
    QXmlStreamReader reader(page);
    int elements = 0;
    while (!reader.atEnd())
      elements += reader.readNext() == QXmlStreamReader::StartElement ? 1 : 0;
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString() << " in line " << reader.lineNumber();
    EXPECT_GT(elements, 10);
    EXPECT_TRUE(std::all_of(page.begin(), page.end(), [](char c) { return c > 0; })) << "no letter beyond ASCII";
  }
}

TEST_F(ServiceTest, ServesItsOwnPathsOnly) {
  for (const char *target :
       {"/cgi-bin/borvane/control.pl?cmd=geta&map=A#b", "/cgi-bin/borvane/control.pl", "/borvane/version.txt",
        "/borvane/version.txt?x", "/borvane", "/borvane/", "/borvane/index.html", "/products.html"})
    EXPECT_TRUE(service_.Serves(target)) << target;
  for (const char *target : {"/", "/borvane/other", "/cgi-bin/borvane/control.pl/x", "//borvane/", "/cgi-bin/borvane/",
                             "/recenteqs/?/borvane/", "/borvane/../borvane/", "/products", "/products.html/"})
    EXPECT_FALSE(service_.Serves(target)) << target;
}

}  // namespace
}  // namespace borvane::mirror
