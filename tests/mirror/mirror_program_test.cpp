#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <QUrl>
#include <optional>

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "support/mirror/client.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/sample_pages.h"
#include "support/plain_scanners.h"
#include "support/reserved_port.h"

// The real program over a real socket.

namespace borvane::mirror {
namespace {

TEST(Mirror, PrintsOneLineWhenItListens) {
  MirrorProcess mirror;
  const quint16 port = mirror.Port();
  EXPECT_NE(port, 0);
  EXPECT_EQ(mirror.Output(), "borvane-mirror listening on 127.0.0.1:" + QByteArray::number(port) + '\n');
  EXPECT_EQ(mirror.Errors(), "");
}

TEST(Mirror, ListensAtBothLoopbackAddresses) {
  MirrorProcess mirror({"--listen", "localhost:0"});
  const quint16 port = mirror.Port();
  const QByteArray number = QByteArray::number(port);
  Client ipv4(port, QHostAddress::LocalHost);
  ipv4.Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(ipv4.Read().value().status, 200);

  Client ipv6(port, QHostAddress::LocalHostIPv6);
  if (!ipv6.IsOpen()) {
    EXPECT_TRUE(mirror.Errors().contains("continuing with IPv4 only")) << "a computer without IPv6";
    return;
  }
  ipv6.Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(ipv6.Read().value().status, 200);
  EXPECT_EQ(mirror.Output(),
            "borvane-mirror listening on 127.0.0.1:" + number + "\nborvane-mirror listening on [::1]:" + number + '\n');
}

TEST(Mirror, NamesItselfAndItsPages) {
  MirrorProcess mirror;
  const QByteArray port = QByteArray::number(mirror.Port());
  const Response index = Get(mirror.Port(), "/", "southern.localhost:" + port).value();
  EXPECT_EQ(index.status, 200);
  EXPECT_EQ(index.headers["server"], "borvane-mirror/2.3.5");
  EXPECT_EQ(index.headers["content-type"], "text/html; charset=windows-1252");
  EXPECT_TRUE(index.body.contains("\"/recenteqs/Maps/Los_Angeles.html\""));
  EXPECT_TRUE(index.body.contains("\"http://northern.localhost:" + port + "/recenteqs/Maps/Parkfield.html\""));
  EXPECT_TRUE(index.body.contains("U.S. Geological Survey"));
}

TEST(Mirror, ServesEachAreaWithAtLeastTenRows) {
  MirrorProcess mirror;
  for (const auto &[host, path] :
       std::vector<std::pair<QByteArray, QByteArray>>{{"southern", "/recenteqs/Maps/Los_Angeles.html"},
                                                      {"southern", "/recenteqs/Maps/San_Francisco.html"},
                                                      {"southern", "/recenteqs/Maps/Long_Valley.html"},
                                                      {"southern", "/recenteqs/Maps/116-33.html"},
                                                      {"southern", "/recenteqs/Maps/117-33.html"},
                                                      {"southern", "/recenteqs/Maps/121-37.html"},
                                                      {"southern", "/recenteqs/Maps/33-116.html"},
                                                      {"pacificnorthwest", "/recenteqs/Quakes/quakes0.html"},
                                                      {"northern", "/recenteqs/Maps/Parkfield.html"},
                                                      {"memphis", "/recenteqs/Quakes/quakes0.html"}}) {
    const Response page = Get(mirror.Port(), path, host + ".localhost:17650").value();
    EXPECT_EQ(page.status, 200);
    const plain::ScanResult scan = plain::ScanQuakesList(page.body.toStdString());
    EXPECT_EQ(scan.failure, 0);
    EXPECT_GE(scan.rows.size(), 10U) << host.toStdString() << path.toStdString();
  }
}

TEST(Mirror, ServesTheOtherFormsOfLists) {
  MirrorProcess mirror;
  const auto page = [&](const QByteArray &path, const QByteArray &host) {
    const Response response = Get(mirror.Port(), path, host).value();
    EXPECT_EQ(response.status, 200);
    return response.body.toStdString();
  };
  const std::vector<plain::ScanResult> scans = {
      plain::ScanMapList(page("/req2webdir/recenteqs/Quakes/quakes0.html", "utah.localhost:17650")),
      plain::ScanMapList(page("/LCSN/recenteqs/Quakes/quakes0.html", "northeastern.localhost:17650")),
      plain::ScanWorldList(page("/eqcenter/recenteqsww/Quakes/quakes_all.php", "national.localhost:17650")),
      plain::ScanWorldList(page("/eqcenter/recenteqsww/Quakes/quakes_big.php", "national.localhost:17650")),
      plain::ScanMapAnchorList(page("/recenteqs/eqs_all.htm", "puertorico.localhost:17650"))};
  for (const plain::ScanResult &scan : scans) {
    EXPECT_EQ(scan.failure, 0);
    EXPECT_GE(scan.rows.size(), 10U);
  }
}

TEST(Mirror, ServesTheEventOfTheRegionAtTheAddressInItsTable) {
  MirrorProcess mirror;
  const QByteArray host = "127.0.0.1:" + QByteArray::number(mirror.Port());
  const Response list = Get(mirror.Port(), "/recenteqs_sub/", host).value();
  const plain::ScanResult scan = plain::ScanRegionTable(list.body.toStdString());
  EXPECT_EQ(scan.failure, 0);
  const QByteArray address = QByteArray::fromStdString(scan.rows.at(0)[plain::region_column::link]);
  ASSERT_TRUE(address.startsWith("http://" + host + '/')) << address.constData();
  const Response event = Get(mirror.Port(), address.sliced(7 + host.size()), host).value();
  EXPECT_EQ(event.status, 200);
  EXPECT_EQ(plain::ReadEventPage(event.body.toStdString()),
            (plain::EventPage{61.726F, -149.628F, 0, "28.5 km (17.7 mi)", 0}));
}

TEST(Mirror, ServesTwoNetworksAtOnePathByTheHost) {
  MirrorProcess mirror;
  const QByteArray path = "/recenteqs/Quakes/quakes0.html";
  const QByteArray northwest = Get(mirror.Port(), path, "PacificNorthwest.localhost").value().body;
  const QByteArray central = Get(mirror.Port(), path, "memphis.localhost").value().body;
  EXPECT_NE(northwest, central);
  EXPECT_EQ(Get(mirror.Port(), path, "127.0.0.1").value().status, 404);
}

TEST(Mirror, ServesAnEmptyPageOfTheCoordinatesZero) {
  MirrorProcess mirror;
  const Response page = Get(mirror.Port(), "/recenteqs/Maps/0-0.html").value();
  EXPECT_EQ(page.status, 200);
  EXPECT_TRUE(plain::ScanQuakesList(page.body.toStdString()).rows.empty());
}

TEST(Mirror, ServesThePageOfEachRowsLink) {
  MirrorProcess mirror;
  const Response list = Get(mirror.Port(), "/recenteqs/Maps/Los_Angeles.html").value();
  Client client(mirror.Port());
  for (const plain::Row &row : plain::ScanQuakesList(list.body.toStdString()).rows) {
    client.Send("GET /" + QByteArray::fromStdString(row[plain::column::link]) +
                " HTTP/1.1\r\nHost: southern.localhost\r\n\r\n");
    const Response page = client.Read().value();
    EXPECT_EQ(page.status, 200) << row[plain::column::link];
    EXPECT_TRUE(page.body.contains("<dd>" + QByteArray::fromStdString(row[plain::column::magnitude]) + "</dd>"))
        << row[plain::column::link];
  }
}

/// Where the links of a page lead to in this mirror: all of its index, elsewhere the first to each folder.
QList<QUrl> LinksOf(const QUrl &address, const QByteArray &page) {
  static const QRegularExpression link(R"(<a href="([^"]*))", QRegularExpression::CaseInsensitiveOption);
  const QUrl base = page.contains("<base href=\"/\">") ? address.resolved(QUrl("/")) : address;
  QList<QUrl> found;
  QSet<QUrl> folders;
  for (QRegularExpressionMatchIterator links = link.globalMatch(QString::fromLatin1(page)); links.hasNext();) {
    const QUrl target = base.resolved(QUrl(links.next().captured(1)));
    const QUrl folder = target.adjusted(QUrl::RemoveFilename);
    if (target.port() == address.port() && (address.path() == "/" || !folders.contains(folder)))
      found.append(target);
    folders.insert(folder);
  }
  return found;
}

TEST(Mirror, ServesWellFormedPagesForLightAndDarkWhereverALinkLeads) {
  MirrorProcess mirror;
  const QUrl root(QString("http://localhost:%1/").arg(mirror.Port()));
  QList<QUrl> waiting = {root, root.resolved(QUrl("/borvane/")), root.resolved(QUrl("/products.html"))};
  QSet<QUrl> seen(waiting.begin(), waiting.end());
  int events = 0;
  while (!waiting.isEmpty()) {
    const QUrl address = waiting.takeFirst();
    const std::string name = address.toString().toStdString();
    const std::optional<Response> page =
        Get(mirror.Port(), address.path(QUrl::FullyEncoded).toLatin1(), address.authority().toLatin1());
    ASSERT_TRUE(page) << name;
    EXPECT_EQ(page->status, 200) << name;
    // What the monitor reads there is no XML.
    QByteArray body = page->body;
    body.replace("ALIGN=right", "ALIGN=\"right\"").replace("<td nowrap>", "<td>").replace("<base href=\"/\">", "");
    EXPECT_EQ(FaultOf(body), "") << name;
    EXPECT_TRUE(body.contains("color-scheme: light dark;")) << name;
    EXPECT_TRUE(body.contains("@media (prefers-color-scheme: dark)")) << name;
    events += body.contains("<dt>Id:</dt>") ? 1 : 0;
    for (const QUrl &link : LinksOf(address, page->body))
      if (!seen.contains(link)) {
        seen.insert(link);
        waiting.append(link);
      }
  }
  EXPECT_GT(seen.size(), 30);
  EXPECT_GT(events, 10);
}

TEST(Mirror, AnswersAnUnknownPathWithAPage) {
  MirrorProcess mirror;
  for (const char *path : {"/nowhere", "/recenteqs/Quakes/none.html", "/recenteqs/Quakes/", "/../../etc/passwd",
                           "/recenteqs/Quakes/../../../etc/passwd.html"}) {
    const Response page = Get(mirror.Port(), path).value();
    EXPECT_EQ(page.status, 404) << path;
    EXPECT_TRUE(page.body.contains("<h1>404 Not Found</h1>"));
  }
}

TEST(Mirror, RefusesAListPageWithoutABodyAndAnEventPageWithOne) {
  MirrorProcess mirror;
  const auto refusal = [&](const QByteArray &bytes) {
    Client client(mirror.Port());
    client.Send(bytes);
    return client.Read().value();
  };
  const QByteArray rest(70'000, 'x');
  const std::vector<std::pair<int, QByteArray>> refused = {{400, " HTTP/1.1\r\nHost\r\n\r\n"},
                                                           {405, " HTTP/1.1\r\n\r\n"},
                                                           {414, "?" + rest},
                                                           {431, " HTTP/1.1\r\nA: " + rest},
                                                           {505, " HTTP/2.0\r\n\r\n"}};
  for (const auto &[status, after_path] : refused) {
    const QByteArray method = status == 405 ? "POST " : "GET ";
    const Response list = refusal(method + "/recenteqs/Maps/Los_Angeles.html" + after_path);
    EXPECT_EQ(list.status, status);
    EXPECT_EQ(list.body, "") << status;
    const Response event = refusal(method + "/recenteqs/Quakes/ci1.html" + after_path);
    EXPECT_EQ(event.status, status);
    EXPECT_GT(event.body.indexOf('<', 25), 0) << status;
  }
}

TEST(Mirror, IgnoresAQuery) {
  MirrorProcess mirror;
  EXPECT_EQ(Get(mirror.Port(), "/recenteqs/Maps/116-33.html?x=1 2").value().body,
            Get(mirror.Port(), "/recenteqs/Maps/116-33.html").value().body);
}

TEST(Mirror, ShowsTheTimesOfItsOwnZone) {
  MirrorProcess utc({}, {.variables = {"TZ=UTC"}});
  MirrorProcess tokyo({}, {.variables = {"TZ=JST-9"}});
  const auto newest = [](MirrorProcess &mirror) {
    const Response page = Get(mirror.Port(), "/recenteqs/Maps/116-33.html").value();
    const plain::Row row = plain::ScanQuakesList(page.body.toStdString()).rows.at(0);
    return row[plain::column::date] + ' ' + row[plain::column::time];
  };
  EXPECT_EQ(newest(utc), "2025/05/15 00:25:18");
  EXPECT_EQ(newest(tokyo), "2025/05/15 09:25:18");
}

/// Lets this process open as many files as the system allows it.
rlim_t OpenManyFiles() {
  rlimit limit = {};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  return limit.rlim_cur;
}

/// One of many addresses of this computer.
QHostAddress AddressOf(int number) { return QHostAddress(QString("127.0.1.%1").arg(number + 1)); }

TEST(Mirror, ServesOthersWhenAClientTakesAllTheConnectionsItCan) {
  ASSERT_GE(OpenManyFiles(), 1200U) << "this computer allows too few open files for the test";
  MirrorProcess mirror({}, {.files = {.soft = 256, .hard = 4096}});
  std::vector<std::unique_ptr<Client>> greedy;
  for (int i = 0; i < 600; ++i)
    greedy.push_back(std::make_unique<Client>(mirror.Port(), QHostAddress::LocalHost, AddressOf(0)));
  EXPECT_TRUE(greedy.back()->EndsWithin(15'000));
  EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
}

TEST(Mirror, HoldsAThousandIdleConnectionsAndServesOn) {
  ASSERT_GE(OpenManyFiles(), 1200U) << "this computer allows too few open files for the test";
  MirrorProcess mirror({}, {.files = {.soft = 256, .hard = 4096}});
  std::vector<std::unique_ptr<Client>> idle;
  for (int i = 0; i < 1000; ++i)
    idle.push_back(std::make_unique<Client>(mirror.Port(), QHostAddress::LocalHost, AddressOf(i / 500)));
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
  EXPECT_LT(clock.elapsed(), 8000);
  for (const auto &client : idle) {
    client->Send("GET /recenteqs/Maps/0-0.html HTTP/1.1\r\n\r\n");
    ASSERT_EQ(client->Read().value().status, 200);
  }
}

TEST(Mirror, RefusesConnectionsBeforeItsFilesRunOut) {
  ASSERT_GE(OpenManyFiles(), 400U) << "this computer allows too few open files for the test";
  MirrorProcess mirror({}, {.files = {.soft = 100, .hard = 100}});
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 150; ++i)
    clients.push_back(std::make_unique<Client>(mirror.Port(), QHostAddress::LocalHost, AddressOf(i / 10)));
  clients[60]->Send("GET /recenteqs/Maps/Los_Angeles.html HTTP/1.1\r\n\r\n");
  const Response refusal = clients[60]->Read().value();
  EXPECT_EQ(refusal.status, 503);
  EXPECT_EQ(refusal.body, "") << "the monitor keeps its rows";
  EXPECT_TRUE(clients[149]->EndsWithin(15'000));
  clients.front()->Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(clients.front()->Read().value().status, 200);
}

TEST(Mirror, RestsWhileItHasNoFilesLeftToOpen) {
  ASSERT_GE(OpenManyFiles(), 400U) << "this computer allows too few open files for the test";
  MirrorProcess mirror({}, {.files = few_files});
  ASSERT_NE(mirror.Port(), 0);
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 124; ++i)
    clients.push_back(std::make_unique<Client>(mirror.Port()));
  clients.front()->Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(clients.front()->Read().value().status, 200);
  const qint64 before = mirror.ProcessorMilliseconds();
  QThread::msleep(2000);
  EXPECT_LT(mirror.ProcessorMilliseconds() - before, 200) << "of 2000 ms, though clients wait";
}

TEST(Mirror, ServesAgainAfterItHadNoFilesLeftToOpen) {
  ASSERT_GE(OpenManyFiles(), 400U) << "this computer allows too few open files for the test";
  MirrorProcess mirror({}, {.files = few_files});
  // A sanitizer that meets a type for the first time opens a pipe to look at it, which must happen before the files run
  // out.
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 100; ++i)
    clients.push_back(std::make_unique<Client>(mirror.Port()));
  clients.front()->Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(clients.front()->Read().value().status, 200);
  clients.clear();
  std::optional<Response> response;
  for (const QDeadlineTimer deadline(30'000); !(response && response->status == 200) && !deadline.hasExpired();)
    response = Get(mirror.Port(), "/");
  EXPECT_EQ(response.value().status, 200);
}

TEST(Mirror, PrintsItsOptionsAndItsVersion) {
  MirrorProcess help({"--help"});
  EXPECT_EQ(help.StatusWithin(30'000), 0);
  for (const char *option : {"--catalogue", "--listen", "--store", "--attended", "--config", "--offline"})
    EXPECT_TRUE(help.Output().contains(option)) << option;
  MirrorProcess version({"--version"});
  EXPECT_EQ(version.StatusWithin(30'000), 0);
  EXPECT_EQ(version.Output(), "borvane-mirror 2.3.5\n");
}

TEST(Mirror, RefusesWrongUsageWithStatusTwo) {
  MirrorProcess mirror({"--frobnicate"});
  EXPECT_EQ(mirror.StatusWithin(30'000), 2);
  EXPECT_TRUE(mirror.Errors().contains("--frobnicate"));
  EXPECT_TRUE(mirror.Errors().contains("Usage:"));
  EXPECT_EQ(mirror.Output(), "");
}

/// A configuration file with the text, in a folder of its own.
class ConfiguredMirror : public testing::Test {
 protected:
  void SetUp() override {
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("offline = true\nnewest-version = \"9.8.7\"\nbad = 1\n[[area]]\nname = \"Atlantis\"\n");
  }

  void RemoveFaults() {
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(file.readAll().indexOf("bad")));
  }

  QTemporaryDir folder_;
  const QString file_ = folder_.filePath("mirror.toml");
};

TEST_F(ConfiguredMirror, RefusesAFileWithFaultsAndNamesTheirLines) {
  for (const QStringList &arguments : {QStringList{"--config", file_}, {"--check-config", "--config", file_}}) {
    MirrorProcess mirror(arguments);
    EXPECT_EQ(mirror.StatusWithin(60'000), 2);
    EXPECT_EQ(mirror.Errors(), "borvane-mirror: " + file_.toUtf8() + ":3: unknown key \"bad\"\nborvane-mirror: " +
                                   file_.toUtf8() + ":4: there is no area \"Atlantis\"\n");
    EXPECT_EQ(mirror.Output(), "");
  }
}

TEST_F(ConfiguredMirror, ChecksAFileWithoutListening) {
  RemoveFaults();
  MirrorProcess check({"--check-config", "--config", file_});
  EXPECT_EQ(check.StatusWithin(60'000), 0);
  EXPECT_EQ(check.Output(), file_.toUtf8() + " is in order\n");
}

TEST_F(ConfiguredMirror, ServesByTheFileThatTheEnvironmentNames) {
  RemoveFaults();
  MirrorProcess mirror({}, {.variables = {"BORVANE_MIRROR_CONFIG=" + file_}});
  EXPECT_EQ(Get(mirror.Port(), "/borvane/version.txt", "maker.localhost").value().body, "987");
  MirrorProcess other({"--newest-version", "1.2.3"}, {.variables = {"BORVANE_MIRROR_CONFIG=" + file_}});
  EXPECT_EQ(Get(other.Port(), "/borvane/version.txt", "maker.localhost").value().body, "123");
}

TEST_F(ConfiguredMirror, ServesByTheFileInTheConfigurationFolder) {
  RemoveFaults();
  ASSERT_TRUE(QDir(folder_.path()).mkpath("Nalvorin/borvane-mirror"));
  ASSERT_TRUE(QFile::rename(file_, folder_.filePath("Nalvorin/borvane-mirror/mirror.toml")));
  MirrorProcess mirror({}, {.variables = {"BORVANE_MIRROR_CONFIG=", "XDG_CONFIG_HOME=" + folder_.path()}});
  EXPECT_EQ(Get(mirror.Port(), "/borvane/version.txt", "maker.localhost").value().body, "987");
}

TEST(Mirror, WarnsOfANameOfItsOwnThatBeginsWithALabel) {
  MirrorProcess mirror({"--host", "alaska.school.example", "--host", "quakes.school.example"});
  ASSERT_NE(mirror.Port(), 0);
  ASSERT_TRUE(mirror.LogsWithin("\"alaska.school.example\" begins with the label of a network", 60'000));
  EXPECT_FALSE(mirror.Errors().contains("quakes.school.example"));
}

TEST(Mirror, SaysThatItsPagesAreTheSample) {
  MirrorProcess mirror;
  const QByteArray event = "/recenteqs/Quakes/" + SampleEvents().front().id.toLatin1() + ".html";
  for (const QByteArray &path : {QByteArray("/"), QByteArray("/recenteqs/Maps/Los_Angeles.html"), event})
    EXPECT_TRUE(Get(mirror.Port(), path).value().body.contains("These events are a bundled sample, not today's."))
        << path.constData();
}

TEST(Mirror, LeavesAnAddressAloneThatIsNotThisComputers) {
  MirrorProcess mirror({"--listen", "192.0.2.1:0"});
  EXPECT_EQ(mirror.StatusWithin(30'000), 1);
  EXPECT_TRUE(mirror.Errors().contains("cannot listen on 192.0.2.1:0: "));
}

TEST(Mirror, EndsQuietlyWhenAnotherMirrorHasThePort) {
  MirrorProcess first;
  const QString place = QString("127.0.0.1:%1").arg(first.Port());
  MirrorProcess second({"--listen", place});
  EXPECT_EQ(second.StatusWithin(30'000), 0);
  EXPECT_EQ(second.Output(), "");
  EXPECT_TRUE(second.Errors().contains("another borvane-mirror already serves " + place.toLatin1()));
  EXPECT_EQ(Get(first.Port(), "/").value().status, 200);
}

TEST(Mirror, LeavesAForeignProgramAtTheOtherLoopbackAddressAlone) {
  // At a port that is free at both.
  std::optional<ReservedPort> first;
  QTcpServer foreign;
  for (int attempt = 0; attempt < 10 && !foreign.isListening(); ++attempt) {
    first.emplace();
    foreign.listen(QHostAddress::LocalHostIPv6, first->Number());
  }
  MirrorProcess mirror({"--listen", QString("localhost:%1").arg(first->Number())});
  if (!foreign.isListening()) {
    EXPECT_NE(mirror.Port(), 0);
    EXPECT_TRUE(mirror.Errors().contains("continuing with IPv4 only")) << "a computer without IPv6";
    return;
  }
  EXPECT_EQ(mirror.StatusWithin(30'000), 1);
  EXPECT_EQ(mirror.Output(), "");
  EXPECT_TRUE(mirror.Errors().endsWith("cannot listen on [::1]:" + QByteArray::number(foreign.serverPort()) +
                                       ": another program listens there\n"))
      << mirror.Errors().constData();
}

TEST(Mirror, LeavesAForeignProgramOnThePortAlone) {
  QTcpServer silent;
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  MirrorProcess mirror({"--listen", QString("127.0.0.1:%1").arg(silent.serverPort())});
  EXPECT_EQ(mirror.StatusWithin(30'000), 1);
  EXPECT_TRUE(mirror.Errors().contains("another program listens there"));
  EXPECT_EQ(mirror.Output(), "");
}

TEST(Mirror, EndsWhenAMirrorOfAnotherVersionServesThePort) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
  MirrorProcess mirror({"--listen", QString("127.0.0.1:%1").arg(other.serverPort())});
  ASSERT_TRUE(other.waitForNewConnection(60'000));
  QTcpSocket *visitor = other.nextPendingConnection();
  visitor->write("HTTP/1.1 200 OK\r\nServer: borvane-mirror/99.0.1\r\nBorvane-Pages: 1\r\n\r\n");
  visitor->waitForBytesWritten();
  EXPECT_EQ(mirror.StatusWithin(30'000), 0);
  EXPECT_EQ(mirror.Errors(), "borvane-mirror: borvane-mirror 99.0.1 already serves 127.0.0.1:" +
                                 QByteArray::number(other.serverPort()) + "; this is version " BORVANE_VERSION "\n");
}

TEST(Mirror, IsNoneOfThoseWhoseMonitorReadsOtherPages) {
  // One that does not say which pages it has is older than the monitors that ask.
  for (const char *pages : {"Borvane-Pages: 2\r\n", ""}) {
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    MirrorProcess mirror({"--listen", QString("127.0.0.1:%1").arg(other.serverPort())});
    ASSERT_TRUE(other.waitForNewConnection(60'000));
    QTcpSocket *visitor = other.nextPendingConnection();
    visitor->write(QByteArray("HTTP/1.1 200 OK\r\nServer: borvane-mirror/99.0.1\r\n") + pages + "\r\n");
    visitor->waitForBytesWritten();
    EXPECT_EQ(mirror.StatusWithin(30'000), 1);
    EXPECT_TRUE(mirror.Errors().contains("borvane-mirror 99.0.1 is there, whose pages this version cannot read"))
        << pages;
  }
}

TEST(Mirror, TellsAnotherWebServerOnThePortApart) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
  MirrorProcess mirror({"--listen", QString("127.0.0.1:%1").arg(other.serverPort())});
  ASSERT_TRUE(other.waitForNewConnection(60'000));
  QTcpSocket *visitor = other.nextPendingConnection();
  visitor->write("HTTP/1.1 200 OK\r\nServer: not-borvane-mirror/1.0\r\nContent-Length: 0\r\n\r\n");
  visitor->waitForBytesWritten();
  EXPECT_EQ(mirror.StatusWithin(30'000), 1);
  EXPECT_TRUE(mirror.Errors().contains("another program listens there"));
}

}  // namespace
}  // namespace borvane::mirror
