#include <QEventLoop>
#include <atomic>

#include <gtest/gtest.h>

#include "store/store_thread.h"
#include "support/mirror/postgresql_server.h"
#include "support/mirror/report_store.h"

namespace borvane::mirror {
namespace {

/// A store whose connection the server ends in the middle of a transaction.
class EndedConnection : public testing::Test {
 protected:
  EndedConnection() {
    EXPECT_EQ(Change([](Database &) {}), "ok");
  }

  /// The outcome of a change that is tried until it succeeds or counts as failed.
  QByteArray Change(const std::function<void(Database &)> &work) {
    QByteArray outcome;
    QEventLoop loop;
    thread_.Submit(
        Access::Write,
        [work](Database &database) {
          work(database);
          return QByteArray("ok");
        },
        [&](const std::optional<QByteArray> &result) {
          outcome = result.value_or("failed");
          loop.quit();
        });
    loop.exec();
    return outcome;
  }
  QByteArray Kept() const {
    ReportStore store(address_);
    store.Open();
    return store.ReportsOf("A");
  }

  PostgresqlServer &server_ = PostgresqlServer::Shared();
  const StoreAddress address_ = server_.MakeDatabase();
  std::atomic<int> attempts_ = 0;
  StoreThread thread_{address_, reports_schema, [](LogLevel, const QString &) {}};
};

TEST_F(EndedConnection, OfPostgreSQLIsReopenedForWhatWasNotCommitted) {
  EXPECT_EQ(Change([this](Database &database) {
              Reports().AddReport(database, "A", "one", 1);
              if (++attempts_ == 1)
                server_.EndConnections(address_);
              Reports().AddReport(database, "A", "two", 1);
            }),
            "ok");
  EXPECT_EQ(attempts_, 2);
  EXPECT_EQ(Kept(), "one\ntwo\n");
}

TEST_F(EndedConnection, OfPostgreSQLIsAFailureWhenTheEndOfTheTransactionMayHaveReachedTheServer) {
  EXPECT_EQ(Change([this](Database &database) {
              ++attempts_;
              Reports().AddReport(database, "A", "one", 1);
              server_.EndConnections(address_);
            }),
            "failed");
  EXPECT_EQ(attempts_, 1);
  EXPECT_EQ(Kept(), "");
  EXPECT_EQ(Change([](Database &database) { Reports().AddReport(database, "A", "two", 1); }), "ok");
  EXPECT_EQ(Kept(), "two\n");
}

}  // namespace
}  // namespace borvane::mirror
