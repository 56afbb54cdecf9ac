#include <QFileInfo>

#include "support/mirror/databases.h"
#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"

// The commands as the monitor writes them, to the real program over a real socket.

namespace borvane::mirror {
namespace {

const QByteArray script = "/cgi-bin/borvane/control.pl";

class WireOnEveryDatabase : public OnEveryDatabase {
 protected:
  /// What comes back for a request line, the date aside.
  QByteArray Exchange(const QByteArray &target, const QByteArray &host = "maker.localhost:17650") {
    Client client(mirror_.Port());
    client.Send("GET " + target + " HTTP/1.1\r\nHost: " + host + "\r\nUser-Agent: Borvane\r\nAccept: */*\r\n\r\n");
    const Response response = client.Read().value();
    QByteArray text = QByteArray::number(response.status) + '\n';
    for (const char *name : {"content-type", "content-length", "connection"})
      text += response.headers[name] + '\n';
    return text + response.body;
  }

  /// How a text is sent.
  static QByteArray Plain(const QByteArray &text) {
    return "200\ntext/plain; charset=windows-1252\n" + QByteArray::number(text.size()) + "\nkeep-alive\n" + text;
  }

  MirrorProcess mirror_{{"--store", database_.AddressText()}};
};
INSTANTIATE_TEST_SUITE_P(Wire, WireOnEveryDatabase, testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL),
                         KindName);

TEST_P(WireOnEveryDatabase, AnswersEachCommandToTheByte) {
  const QByteArray summary = "235|10/23/2024 04:15:09 AM|35|3.428571|1|0|95045";
  const QByteArray detail = "235||35|95045|Mission San Jos\xe9|felt, & \x93heard\x94 #2|1|0|1|0|1|0|1|0|-1|2|3";
  EXPECT_EQ(Exchange(script + "?cmd=setonline&macid=123456&AppVersion=235"), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=whoson&macid=999999&AppVersion= 235"), Plain("2"));
  EXPECT_EQ(Exchange(script + "?cmd=add&macid=123456"), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=geta&map=San Juan Bautista, CA"), Plain(""));
  EXPECT_EQ(Exchange(script + "?cmd=puta&map=San Juan Bautista, CA&strout=" + summary), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=putb&map=San Juan Bautista, CA&strout=" + detail), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=putc&zip=95045&map=San Juan Bautista, CA&strout=" + detail), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=geta&map=San Juan Bautista, CA"), Plain(summary + '\n'));
  EXPECT_EQ(Exchange("/borvane/version.txt"), Plain("235"));
  EXPECT_EQ(mirror_.Errors(), "");
}

TEST_P(WireOnEveryDatabase, GivesReportsBackAsTheyCame) {
  const QByteArray map = "  12 km (7 mi) NW of Ca\xf1on, #5?  ";
  const QByteArray record = "235|a||\x80\xff\x01\x7f| HTTP/1.1 | %41%0D%0A + '\"\\; -- <b>\t|";
  EXPECT_EQ(Exchange(script + "?cmd=puta&map=" + map + "&strout=" + record + "&and=more"), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=puta&map=" + map + "&strout=second "), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=geta&map=" + map), Plain(record + "\nsecond \n"));
}

TEST_P(WireOnEveryDatabase, TakesATargetOfSixtyFourKibibytesAndNoMore) {
  const QByteArray start = script + "?cmd=puta&map=A&strout=felt&";
  const QByteArray rest(64 * 1024 - start.size(), 'x');
  const QByteArray answer = Exchange(start + rest + 'x');
  EXPECT_TRUE(answer.startsWith("414\n") && answer.contains('<')) << answer.constData();
  EXPECT_EQ(Exchange(start + rest), Plain("ok"));
  EXPECT_EQ(Exchange(script + "?cmd=geta&map=A"), Plain("felt\n"));
}

TEST_P(WireOnEveryDatabase, AnswersRequestsOnOneConnectionInTheirOrder) {
  Client client(mirror_.Port());
  QByteArray requests;
  for (const char *target :
       {"?cmd=puta&map=A&strout=1", "?cmd=geta&map=A", "?cmd=puta&map=A&strout=2", "?cmd=geta&map=A"})
    requests += "GET " + script + target + " HTTP/1.1\r\n\r\nGET /borvane/version.txt HTTP/1.1\r\n\r\n";
  client.Send(requests);
  for (const char *body : {"ok", "1\n", "ok", "1\n2\n"}) {
    EXPECT_EQ(client.Read().value().body, body);
    EXPECT_EQ(client.Read().value().body, "235");
  }
}

/// The real program on a file.
class WireTest : public testing::Test {
 protected:
  QByteArray Body(const QByteArray &target, const QByteArray &host = "maker.localhost") {
    return Get(mirror_.Port(), target, host).value().body;
  }

  QTemporaryDir folder_;
  MirrorProcess mirror_{{"--store", folder_.filePath("service.sqlite")}};
};

TEST_F(WireTest, RefusesWithAPageThatTheMonitorTakesForAFailure) {
  for (int i = 0; i < 30; ++i)
    ASSERT_EQ(Body(script + "?cmd=puta&map=A&strout=x"), "ok");
  for (const auto &[status, target] : {std::pair(429, "?cmd=puta&map=A&strout=x"), std::pair(400, "?cmd=nothing"),
                                       std::pair(400, "?"), std::pair(400, "")}) {
    const Response response = Get(mirror_.Port(), script + target, "maker.localhost").value();
    EXPECT_EQ(response.status, status) << target;
    EXPECT_EQ(response.headers["content-type"], "text/html; charset=windows-1252");
    EXPECT_TRUE(response.body.contains('<')) << target;
    EXPECT_FALSE(response.body.contains('\n')) << "a reader of report lines would find some";
  }
}

TEST_F(WireTest, TakesNoOtherMethodThanGet) {
  Client client(mirror_.Port());
  client.Send("HEAD " + script + "?cmd=puta&map=A&strout=x HTTP/1.1\r\n\r\n");
  const Response response = client.Read(false).value();
  EXPECT_EQ(response.status, 405);
  EXPECT_EQ(response.headers["allow"], "GET");
  EXPECT_EQ(Body(script + "?cmd=geta&map=A"), "");
}

TEST_F(WireTest, LeadsFromTheFolderWithoutItsSlashToTheProductPage) {
  const Response response = Get(mirror_.Port(), "/borvane", "maker.localhost").value();
  EXPECT_EQ(response.status, 301);
  EXPECT_EQ(response.headers["location"], "/borvane/");
  EXPECT_TRUE(response.body.contains("<h1>301 Moved Permanently</h1>"));
  EXPECT_TRUE(Body("/borvane/").contains("<h1>Borvane</h1>"));
}

TEST_F(WireTest, LetsOthersReportWhenOneReportsTooOften) {
  for (int i = 0; i < 31; ++i)
    Body(script + "?cmd=puta&map=A&strout=x");
  Client client(mirror_.Port(), QHostAddress::LocalHost, QHostAddress("127.0.0.2"));
  client.Send("GET " + script + "?cmd=puta&map=A&strout=y HTTP/1.1\r\n\r\n");
  EXPECT_EQ(client.Read().value().body, "ok");
}

TEST_F(WireTest, IsAtTheMakersHostAndAtAnyThatIsNotAnothers) {
  for (const char *host :
       {"maker.localhost", "MAKER.localhost:17650", "127.0.0.1:17650", "[::1]", "localhost:17650", ""})
    EXPECT_EQ(Body("/borvane/version.txt", host), "235") << host;
  for (const char *host : {"southern.localhost", "national.localhost:17650"})
    for (const QByteArray &target : {QByteArray("/borvane/version.txt"), QByteArray("/borvane/"), script + "?cmd=add"})
      EXPECT_EQ(Get(mirror_.Port(), target, host).value().status, 404) << host << target.constData();
}

TEST_F(WireTest, KeepsNothingThatAWebPageSends) {
  for (const char *line : {"Origin: http://evil.example", "origin: null", "Sec-Fetch-Site: cross-site",
                           "Sec-Fetch-Site: same-site", "Sec-Fetch-Site: none\r\nSec-Fetch-Site: none"}) {
    Client client(mirror_.Port());
    client.Send("GET " + script + "?cmd=puta&map=A&strout=x HTTP/1.1\r\nHost: maker.localhost\r\n" + line + "\r\n\r\n");
    EXPECT_EQ(client.Read().value().status, 403) << line;
  }
  EXPECT_EQ(Get(mirror_.Port(), script + "?cmd=puta&map=A&strout=x", "evil.example").value().status, 403);
  EXPECT_EQ(Body(script + "?cmd=geta&map=A"), "");
}

TEST_F(WireTest, AnswersAPersonsBrowser) {
  for (const char *page : {"/borvane/", "/borvane/index.html", "/products.html"}) {
    Client client(mirror_.Port());
    client.Send(QByteArray("GET ") + page + " HTTP/1.1\r\nHost: maker.localhost\r\nSec-Fetch-Site: none\r\n\r\n");
    EXPECT_EQ(client.Read().value().status, 200) << page;
  }
  EXPECT_EQ(Get(mirror_.Port(), "/products.html", "southern.localhost").value().status, 404);
}

TEST(BorvaneMirror, IsReachedByTheNamesThatItWasGiven) {
  MirrorProcess mirror({"--host", "service.school", "--host=Quakes"});
  for (const char *host : {"service.school:17650", "Service.School", "quakes"})
    EXPECT_EQ(Get(mirror.Port(), "/borvane/version.txt", host).value().body, "235") << host;
  EXPECT_EQ(Get(mirror.Port(), "/borvane/version.txt", "other.school").value().status, 403);
}

TEST_F(WireTest, LoadsADatabaseDriverWithTheFirstCommandOnly) {
  EXPECT_EQ(Body("/borvane/version.txt"), "235");
  EXPECT_NE(Body("/", "southern.localhost"), "");
  EXPECT_FALSE(mirror_.MemoryMap().contains("sqldrivers"));
  EXPECT_EQ(Body(script + "?cmd=add&macid=1"), "ok");
  EXPECT_TRUE(mirror_.MemoryMap().contains("sqldrivers"));
}

TEST(BorvaneMirror, KeepsItsStoreInTheUsersDataFolder) {
  const QTemporaryDir data;
  MirrorProcess mirror({}, {.variables = {"XDG_DATA_HOME=" + data.path()}});
  const QString file = data.filePath("Nalvorin/borvane-mirror/service.sqlite");
  EXPECT_EQ(AskMaker(mirror.Port(), "geta&map=A").value().body, "");
  EXPECT_FALSE(QFileInfo::exists(file));
  EXPECT_EQ(AskMaker(mirror.Port(), "add&macid=1").value().body, "ok");
  EXPECT_TRUE(QFileInfo::exists(file));
}

TEST(BorvaneMirror, ReportsTheNewestVersionThatItWasGiven) {
  MirrorProcess mirror({"--newest-version", "2.10.0"});
  EXPECT_EQ(GetFromMaker(mirror.Port(), "/borvane/version.txt").value().body, "2100");
  EXPECT_TRUE(GetFromMaker(mirror.Port(), "/borvane/").value().body.contains("<strong>2.10.0</strong>"));
}

}  // namespace
}  // namespace borvane::mirror
