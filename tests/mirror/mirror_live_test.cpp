#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <signal.h>

#include "support/mirror/authority.h"
#include "support/mirror/client.h"
#include "support/mirror/feed_server.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/run_until.h"

// The real program with a feed of its own.

namespace borvane::mirror {
namespace {

const QByteArray page_path = "/recenteqs/Maps/Los_Angeles.html";

/// A summary feed of events in the area of Los Angeles, made now, each at its place.
QByteArray FeedOf(const QByteArrayList &places) {
  const QByteArray now = QByteArray::number(QDateTime::currentMSecsSinceEpoch());
  QByteArrayList features;
  for (qsizetype i = 0; i < places.size(); ++i)
    features += R"({"id":"tt)" + QByteArray::number(i) + R"(","properties":{"mag":3,"type":"earthquake","time":)" +
                now + R"(,"updated":)" + now + R"(,"place":")" + places[i] +
                R"("},"geometry":{"coordinates":[-118,34,5]}})";
  return R"({"type":"FeatureCollection","metadata":{"generated":)" + now + R"(},"features":[)" + features.join(',') +
         "]}";
}

FeedServer::Answer Gives(const QByteArrayList &places) { return Sends(HttpAnswer("200 OK", FeedOf(places))); }

/// A folder for a mirror's configuration and its stores.
class LiveMirror : public testing::Test {
 protected:
  /// The arguments of a mirror that asks at that address.
  QStringList Configure(const QString &url, const QByteArray &live = {}) {
    QFile file(folder_.filePath("mirror.toml"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("store = \"service.sqlite\"\n" + live +
               "[[source]]\nname = \"Test\"\ncredit = \"The tests\"\n[[source.feed]]\nperiod = \"1min\"\nurl = \"" +
               url.toUtf8() + "\"\n");
    return {"--config", file.fileName()};
  }

  static bool Shows(MirrorProcess &mirror, const QByteArray &text, const QByteArray &path = page_path) {
    return RunUntil([&] {
      const std::optional<Response> page = Get(mirror.Port(), path);
      return page && page->body.contains(text);
    });
  }

  const QTemporaryDir folder_;
};

TEST_F(LiveMirror, ServesTheEventsOfAFeedWhoseAuthorityItTrusts) {
  Authority authority;
  FeedServer feed(Gives({"Sometown"}), authority.Certify("feeds.localhost"));
  MirrorProcess mirror(Configure(feed.Url(), "[live]\nauthorities = \"" + authority.File().toUtf8() + "\"\n"));
  EXPECT_TRUE(Shows(mirror, "Sometown"));
  EXPECT_TRUE(Shows(mirror, "Source: The tests."));
  EXPECT_TRUE(feed.Requests().value(0).contains("User-Agent: borvane-mirror/" BORVANE_VERSION));
}

TEST_F(LiveMirror, ServesTheSampleWhereNobodyVouchesForTheFeed) {
  Authority authority;
  Authority other;
  FeedServer feed(Gives({"Sometown"}), authority.Certify("feeds.localhost"));
  MirrorProcess mirror(Configure(feed.Url(), "[live]\nauthorities = \"" + other.File().toUtf8() + "\"\n"));
  EXPECT_TRUE(RunUntil([&] { return mirror.Errors().contains("certificate"); })) << mirror.Errors().constData();
  EXPECT_TRUE(Shows(mirror, "These events are a bundled sample, not today's."));
  EXPECT_TRUE(Shows(mirror, "No feed has answered yet.", "/health"));
  EXPECT_EQ(feed.Requests().size(), 0);
}

TEST_F(LiveMirror, KeepsWhatItHasTakenUpOverItsEnd) {
  FeedServer feed(Gives({"Sometown"}));
  const QStringList arguments = Configure(feed.Url());
  {
    MirrorProcess mirror(arguments);
    EXPECT_TRUE(Shows(mirror, "Sometown"));
    mirror.Signal(SIGTERM);
    EXPECT_EQ(mirror.StatusWithin(60'000), 0);
  }
  feed.Close();
  MirrorProcess mirror(arguments);
  EXPECT_TRUE(Shows(mirror, "Sometown"));
}

TEST_F(LiveMirror, AsksNobodyWhenItIsOfflineOrHasACatalogue) {
  FeedServer feed(Gives({"Sometown"}));
  const QStringList arguments = Configure(feed.Url());
  MirrorProcess offline(arguments + QStringList{"--offline"});
  MirrorProcess file(arguments + QStringList{"--catalogue", folder_.filePath("missing.geojson")});
  ASSERT_NE(offline.Port(), 0);
  ASSERT_NE(file.Port(), 0);
  MirrorProcess live(arguments + QStringList{"--store", folder_.filePath("other.sqlite")});
  EXPECT_TRUE(Shows(live, "Sometown"));
  EXPECT_EQ(feed.Requests().size(), 1) << "those that were started before it have not asked";
}

}  // namespace
}  // namespace borvane::mirror
