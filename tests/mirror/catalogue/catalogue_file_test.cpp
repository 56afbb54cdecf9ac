#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <memory>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/mirror/client.h"
#include "support/mirror/mirror_process.h"
#include "support/plain_scanners.h"

// The real program on a catalogue file that changes.

namespace borvane::mirror {
namespace {

/// A feed of `count` events near Los Angeles whose ids begin with `name`.
QByteArray Feed(const QByteArray &name, int count) {
  QByteArray text = R"({"type":"FeatureCollection","features":[)";
  for (int i = 0; i < count; ++i) {
    if (i > 0)
      text += ',';
    text += R"({"type":"Feature","properties":{"mag":1.5,"place":"6km ENE of Yucaipa, CA","time":)" +
            QByteArray::number(1594870627920 - i) +
            R"(},"geometry":{"type":"Point","coordinates":[-117,34,5]},"id":")" + name + QByteArray::number(i) + "\"}";
  }
  return text + "]}";
}

class CatalogueFiles : public testing::Test {
 protected:
  QString Path() const { return folder_.filePath("events.geojson"); }

  void Write(const QByteArray &text, const QString &path) const {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(text), text.size());
  }

  /// Puts the text into place as careful writers do: beside the file, then renamed over it.
  void Replace(const QByteArray &text) const {
    Write(text, Path() + ".new");
    ASSERT_EQ(::rename(QFile::encodeName(Path() + ".new").constData(), QFile::encodeName(Path()).constData()), 0);
  }

  static std::vector<plain::Row> Rows(MirrorProcess &mirror) {
    const std::optional<Response> page = Get(mirror.Port(), "/recenteqs/Maps/Los_Angeles.html");
    return page ? plain::ScanQuakesList(page->body.toStdString()).rows : std::vector<plain::Row>();
  }

  /// Whether the condition becomes true. A look at the file takes its time on a busy machine.
  static bool Becomes(const std::function<bool()> &condition) {
    for (const QDeadlineTimer deadline(60'000); !deadline.hasExpired(); QThread::msleep(20)) {
      if (condition())
        return true;
    }
    return false;
  }

  /// Whether the mirror has the event, sooner or later.
  static bool Serves(MirrorProcess &mirror, const QByteArray &id) {
    return Becomes([&] {
      const std::optional<Response> page = Get(mirror.Port(), "/recenteqs/Quakes/" + id + ".html");
      return page && page->status == 200;
    });
  }

  /// Whether the page's first row leads to the event, sooner or later.
  static bool ServesFirst(MirrorProcess &mirror, const std::string &id) {
    return Becomes([&] {
      const std::vector<plain::Row> rows = Rows(mirror);
      return !rows.empty() && rows[0][plain::column::link] == "recenteqs/Quakes/" + id + ".html";
    });
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(CatalogueFiles, AreServedInPlaceOfTheSample) {
  Write(Feed("first", 3), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  const std::vector<plain::Row> rows = Rows(mirror);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0][plain::column::link], "recenteqs/Quakes/first0.html");
  EXPECT_EQ(rows[0][plain::column::place], "6 km ( 4 mi) ENE of Yucaipa, CA");
  EXPECT_EQ(mirror.Errors(), "");
}

TEST_F(CatalogueFiles, AreReadAgainWhenTheyAreWritten) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
  Write(Feed("other", 1), Path());
  EXPECT_TRUE(ServesFirst(mirror, "other0"));
}

TEST_F(CatalogueFiles, AreReadAgainWhenAnotherTakesTheirPlace) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
  Replace(Feed("other", 1));
  EXPECT_TRUE(ServesFirst(mirror, "other0"));
  EXPECT_EQ(mirror.Errors(), "");
}

TEST_F(CatalogueFiles, ThatTurnBadAreLoggedByNameAndTheLastGoodOneStays) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(ServesFirst(mirror, "first0"));

  Replace("{\"type\":\"FeatureCollection\",\"features\":[");
  EXPECT_TRUE(mirror.LogsWithin("the catalogue file " + Path().toUtf8() + " cannot be used: not JSON", 30'000));
  EXPECT_TRUE(ServesFirst(mirror, "first0"));

  Replace("[1, 2, 3]");
  EXPECT_TRUE(mirror.LogsWithin(Path().toUtf8() + " cannot be used: not a GeoJSON feature collection", 30'000));
  EXPECT_TRUE(ServesFirst(mirror, "first0"));

  QFile::remove(Path());
  EXPECT_TRUE(mirror.LogsWithin(Path().toUtf8() + " cannot be used: No such file", 30'000));
  EXPECT_TRUE(ServesFirst(mirror, "first0"));

  Write(Feed("again", 1), Path());
  EXPECT_TRUE(ServesFirst(mirror, "again0"));
}

TEST_F(CatalogueFiles, ThatAreBadAtTheStartGiveEmptyPagesUntilTheyAreGood) {
  Write("<html>", Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_NE(mirror.Port(), 0);
  EXPECT_TRUE(mirror.LogsWithin(Path().toUtf8() + " cannot be used: not JSON", 30'000));
  EXPECT_TRUE(Rows(mirror).empty());
  Write(Feed("first", 1), Path());
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
}

TEST_F(CatalogueFiles, MayComeLaterThanTheMirror) {
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_NE(mirror.Port(), 0);
  EXPECT_TRUE(mirror.LogsWithin("No such file", 30'000));
  EXPECT_EQ(mirror.Errors(),
            "borvane-mirror: the catalogue file " + Path().toUtf8() + " cannot be used: No such file or directory\n");
  Write(Feed("first", 1), Path());
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
}

TEST_F(CatalogueFiles, ThatAreNoFilesAreLoggedAndNotWaitedFor) {
  const QByteArray pipe = QFile::encodeName(Path());
  ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
  for (const QString &path : {QString("/"), QString("/dev/zero"), Path()}) {
    MirrorProcess mirror({"--catalogue", path});
    EXPECT_NE(mirror.Port(), 0) << path.toStdString();
    EXPECT_TRUE(mirror.LogsWithin("the catalogue file " + path.toUtf8() + " cannot be used: not a file", 30'000));
    EXPECT_EQ(Get(mirror.Port(), "/").value().status, 200);
  }
}

TEST_F(CatalogueFiles, ThatAreTooLargeAreLogged) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
  ASSERT_TRUE(QFile::resize(Path(), 256 * 1024 * 1024 + 1));
  EXPECT_TRUE(mirror.LogsWithin("cannot be used: larger than 268435456 bytes", 30'000));
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
}

TEST_F(CatalogueFiles, AreLoggedOnceForEachTimeThatTheyAreBad) {
  Write("<html>", Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(mirror.LogsWithin("not JSON", 30'000));
  QThread::msleep(1000);
  EXPECT_EQ(mirror.Errors().count("cannot be used"), 1);
  Replace("<html>");
  EXPECT_TRUE(Becomes([&] { return mirror.Errors().count("cannot be used") == 2; }));
}

TEST_F(CatalogueFiles, MayBeBadWhenNobodyListensAnyMore) {
  Write(Feed("first", 1), Path());
  const QString pipe = Path() + ".pipe";
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  const int listener = ::open(QFile::encodeName(pipe).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  MirrorProcess mirror({"--catalogue", Path()}, {.errors_to = pipe});
  // Not a page is asked for before: with the first answer that it sends, Qt takes the signal of a broken pipe away.
  ASSERT_NE(mirror.Port(), 0);
  ::close(listener);
  Replace("<html>");
  EXPECT_EQ(mirror.StatusWithin(1000), std::nullopt);
  Replace(Feed("other", 1));
  EXPECT_TRUE(ServesFirst(mirror, "other0"));
}

TEST_F(CatalogueFiles, CanBeReadWhileAllConnectionsAreTaken) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()}, {.files = {.soft = 100, .hard = 100}});
  Client watcher(mirror.Port());
  watcher.Send("GET / HTTP/1.1\r\n\r\n");
  EXPECT_EQ(watcher.Read().value().status, 200);
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 100; ++i)
    clients.push_back(std::make_unique<Client>(mirror.Port(), QHostAddress::LocalHost,
                                               QHostAddress(QString("127.0.1.%1").arg(i / 10 + 1))));
  Replace(Feed("other", 3));
  EXPECT_TRUE(Becomes([&] {
    watcher.Send("GET / HTTP/1.1\r\n\r\n");
    return watcher.Read().value().body.contains("3 events");
  }));
  EXPECT_EQ(mirror.Errors(), "");
}

TEST_F(CatalogueFiles, ThatCannotBeOpenedForAWhileAreReadLater) {
  Write(Feed("first", 1), Path());
  MirrorProcess mirror({"--catalogue", Path()}, {.files = few_files});
  EXPECT_TRUE(ServesFirst(mirror, "first0"));
  // A sanitizer that meets a type for the first time opens a pipe to look at it, which must happen before the files run
  // out.
  Replace("<html>");
  EXPECT_TRUE(mirror.LogsWithin("not JSON", 30'000));
  Replace(Feed("second", 1));
  EXPECT_TRUE(ServesFirst(mirror, "second0"));

  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 100; ++i)
    clients.push_back(std::make_unique<Client>(mirror.Port()));
  QThread::msleep(300);
  Replace(Feed("other", 1));
  EXPECT_TRUE(mirror.LogsWithin("cannot be used: Too many open files", 30'000));
  clients.clear();
  EXPECT_TRUE(Serves(mirror, "other0"));
}

TEST_F(CatalogueFiles, WithFeaturesThatAreNoEventsAreServedWithoutThem) {
  QByteArray text = Feed("first", 2);
  text.replace("\"features\":[", "\"features\":[null,{},");
  Write(text, Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_EQ(Rows(mirror).size(), 2U);
  EXPECT_TRUE(mirror.LogsWithin("skipped 2 of 4 features", 30'000));
}

TEST_F(CatalogueFiles, DoNotFillTheMemoryWithTheirPages) {
  Write(Feed("event", 5000), Path());
  // An address sanitizer would keep what is freed for a while, which is not what is measured here.
  MirrorProcess mirror({"--catalogue", Path()}, {.variables = {"ASAN_OPTIONS=quarantine_size_mb=1"}});
  EXPECT_EQ(Get(mirror.Port(), "/recenteqs/Maps/0-0.html").value().status, 200);
  const qint64 before = mirror.ResidentBytes();
  ASSERT_GT(before, 0);
  qint64 served = 0;
  for (const char *name : {"116-33", "116-34", "116-35", "117-33", "117-34", "117-35", "118-33", "118-34", "118-35"})
    for (const char *host : {"national", "southern", "northern", "pacificnorthwest", "alaska", "utah", "memphis",
                             "northeastern", "puertorico", "maker", "example"}) {
      const Response answer =
          Get(mirror.Port(), "/recenteqs/Maps/" + QByteArray(name) + ".html", QByteArray(host) + ".localhost").value();
      served += answer.body.size();
    }
  EXPECT_GT(served, 50'000'000);
  EXPECT_LT(mirror.ResidentBytes() - before, 45'000'000);
}

#ifndef __SANITIZE_ADDRESS__
// What goes back to the system is up to the allocator, and a sanitizer brings one of its own.
TEST_F(CatalogueFiles, GiveTheirMemoryBackWhenASmallOneFollowsALargeOne) {
  constexpr qint64 most_kept = 5'000'000;
  Write(Feed("small", 1000), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  EXPECT_TRUE(Serves(mirror, "small0"));
  const qint64 before = mirror.PrivateBytes();
  ASSERT_GT(before, 0);
  Replace(Feed("large", 60'000));
  EXPECT_TRUE(Serves(mirror, "large0"));
  EXPECT_GT(mirror.PrivateBytes() - before, 10'000'000);
  Replace(Feed("smaller", 1000));
  EXPECT_TRUE(Serves(mirror, "smaller0"));
  for (const QDeadlineTimer deadline(60'000); mirror.PrivateBytes() - before > most_kept && !deadline.hasExpired();)
    QThread::msleep(50);
  EXPECT_LE(mirror.PrivateBytes() - before, most_kept);
}
#endif

TEST_F(CatalogueFiles, AreServedWholeOrNotAtAllWhileTheyAreWritten) {
  Write(Feed("first", 200), Path());
  MirrorProcess mirror({"--catalogue", Path()});
  ASSERT_EQ(Rows(mirror).size(), 200U);

  // A writer that stops in the middle for longer than a look takes.
  const QByteArray next = Feed("other", 300);
  QFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  for (qsizetype at = 0; at < next.size(); at += next.size() / 8 + 1) {
    file.write(next.mid(at, next.size() / 8 + 1));
    file.flush();
    QThread::msleep(150);
    const std::vector<plain::Row> rows = Rows(mirror);
    EXPECT_TRUE(rows.size() == 200 || rows.size() == 300) << rows.size();
  }
  file.close();
  EXPECT_TRUE(ServesFirst(mirror, "other0"));
  EXPECT_EQ(Rows(mirror).size(), 300U);
}

}  // namespace
}  // namespace borvane::mirror
