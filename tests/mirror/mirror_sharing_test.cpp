#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <signal.h>

#include "support/mirror/client.h"
#include "support/mirror/databases.h"
#include "support/mirror/events_under_test.h"
#include "support/mirror/feed_server.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/postgresql_server.h"
#include "support/mirror/run_until.h"

// The real program with a feed of its own, while another mirror at its database leads.

namespace borvane::mirror {
namespace {

class MirrorOnPostgreSQL : public testing::Test {
 protected:
  MirrorOnPostgreSQL() {
    QFile file(folder_.filePath("mirror.toml"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[[source]]\nname = \"Test\"\ncredit = \"The tests\"\n[[source.feed]]\nperiod = \"5s\"\nurl = \"" +
               feed_.Url().toUtf8() + "\"\n");
  }

  bool AsksFeeds(bool asks) {
    const QByteArray line = QByteArray("\nborvane_asks_feeds ") + (asks ? '1' : '0') + '\n';
    return RunUntil([&] {
      const std::optional<Response> metrics = Get(mirror_->Port(), "/metrics");
      return metrics && metrics->body.contains(line);
    });
  }

  /// Lets the mirror lead and ask, then another one lead and write those records, then this one lead and ask again.
  void LoseTheLeadToOneThatWrites(const std::vector<EventRecord> &records) {
    mirror_ = std::make_unique<MirrorProcess>(
        QStringList{"--config", folder_.filePath("mirror.toml"), "--store", CommandLineText(database_)});
    ASSERT_TRUE(AsksFeeds(true));
    ASSERT_TRUE(RunUntil([&] {
      const std::optional<Response> metrics = Get(mirror_->Port(), "/metrics");
      return metrics && metrics->body.contains("\nborvane_events 0\n");
    }));
    mirror_->Signal(SIGSTOP);
    PostgresqlServer::Shared().EndConnections(database_);
    {
      EventsUnderTest other(EventStoreAddress(database_), {}, {"Test"});
      other.SetTime(now_);
      other.Start();
      ASSERT_TRUE(WaitFor([&] { return other.Leads() == true; }));
      other.Write(records, now_);
      mirror_->Signal(SIGCONT);
      ASSERT_TRUE(AsksFeeds(false));
      RunFor(100);  // what it has sent before arrives
      requests_before_ = feed_.Requests().size();
    }
    ASSERT_TRUE(RunUntil([&] { return feed_.Requests().size() > requests_before_; }));
  }

  /// The first request after it leads again.
  QByteArray NextRequest() const { return feed_.Requests().value(requests_before_); }

  const qint64 now_ = QDateTime::currentMSecsSinceEpoch();
  const QTemporaryDir folder_;
  const StoreAddress database_ = PostgresqlServer::Shared().MakeDatabase();
  FeedServer feed_{Sends(HttpAnswer(
      "200 OK",
      R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(now_) + R"(},"features":[]})",
      {"ETag: \"1\""}))};
  std::unique_ptr<MirrorProcess> mirror_;
  qsizetype requests_before_ = 0;
};

TEST_F(MirrorOnPostgreSQL, AsksForWhatIsNewWhereNothingWasTakenUpMeanwhile) {
  LoseTheLeadToOneThatWrites({});
  EXPECT_TRUE(NextRequest().contains("If-None-Match: \"1\"\r\n"));
}

TEST_F(MirrorOnPostgreSQL, AsksForEverythingWhereAnotherMirrorTookUpEventsMeanwhile) {
  EventRecord record = Said("a", 0, 2.5, now_);
  record.event.origin_time = now_ - one_hour;
  LoseTheLeadToOneThatWrites({record});
  EXPECT_FALSE(NextRequest().contains("If-None-Match"));
}

}  // namespace
}  // namespace borvane::mirror
