#include "store/store_thread.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <future>

#include <gtest/gtest.h>

#include "service/reports.h"
#include "support/mirror/report_store.h"

namespace borvane::mirror {
namespace {

/// A store thread on a file that is created by the first change, and the lines that it logs.
class StoreThreadTest : public testing::Test {
 protected:
  /// Does a job and waits for its outcome; "failed" for a failure.
  QByteArray Do(Access access, const StoreThread::Work &work) {
    QByteArray outcome;
    QEventLoop loop;
    thread_->Submit(access, work, [&](const std::optional<QByteArray> &result) {
      outcome = result.value_or("failed");
      loop.quit();
    });
    QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
    if (outcome.isEmpty())
      loop.exec();
    EXPECT_NE(outcome, "") << "there was no outcome";
    return outcome;
  }

  QByteArray Succeed(Access access = Access::Write) {
    return Do(access, [](Database &) { return QByteArray("done"); });
  }
  /// Whether a job that is tried again and again succeeds within the time.
  bool SucceedsWithin(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (Succeed() != "done") {
      if (clock.elapsed() > milliseconds)
        return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
  }
  QByteArray Fail(Access access = Access::Write) {
    return Do(access, [](Database &) -> QByteArray { throw StoreFailure("no reason"); });
  }

  /// Lets events run until all of `count` outcomes are there.
  static void WaitFor(const QByteArrayList &outcomes, qsizetype count) {
    QElapsedTimer clock;
    clock.start();
    while (outcomes.size() < count && clock.elapsed() < 60'000)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
  }

  QTemporaryDir folder_;
  const StoreAddress address_ = {.file = folder_.filePath("service.sqlite")};
  QStringList lines_;
  QList<LogLevel> levels_;  // of the lines
  WriteLog log_ = [this](LogLevel level, const QString &line) {
    levels_.append(level);
    lines_.append(line);
  };
  std::unique_ptr<StoreThread> thread_ = std::make_unique<StoreThread>(address_, reports_schema, log_, 60'000);
};

TEST_F(StoreThreadTest, WorksInAnotherThreadAndAnswersInThisOne) {
  QThread *worker = nullptr;
  QThread *answerer = nullptr;
  QEventLoop loop;
  thread_->Submit(
      Access::Write,
      [&worker](Database &) {
        worker = QThread::currentThread();
        return QByteArray();
      },
      [&](const std::optional<QByteArray> &) {
        answerer = QThread::currentThread();
        loop.quit();
      });
  loop.exec();
  EXPECT_NE(worker, QThread::currentThread());
  EXPECT_EQ(answerer, QThread::currentThread());
}

TEST_F(StoreThreadTest, MakesOneTransactionOfTheWritesThatWaitTogether) {
  std::promise<void> gate;
  std::shared_future<void> open = gate.get_future().share();
  QByteArrayList outcomes;
  const auto note = [&](const std::optional<QByteArray> &result) { outcomes.append(result.value_or("failed")); };
  int attempts = 0;
  // The first job holds the thread until the others wait. The third fails, so that its transaction is rolled back.
  std::promise<void> begun;
  thread_->Submit(
      Access::Write, [&begun, open](Database &) { return begun.set_value(), open.wait(), QByteArray("first"); }, note);
  begun.get_future().wait();
  thread_->Submit(
      Access::Write,
      [&attempts](Database &database) {
        ++attempts;
        Reports().AddReport(database, "A", "x", 1);
        return QByteArray("second");
      },
      note);
  thread_->Submit(
      Access::Write, [](Database &) -> QByteArray { throw StoreFailure("no reason"); }, note);
  gate.set_value();
  WaitFor(outcomes, 3);
  EXPECT_EQ(outcomes, QByteArrayList({"first", "failed", "failed"}));
  EXPECT_EQ(attempts, 2) << "once, and once again on a new connection";
  EXPECT_EQ(Do(Access::Read, [](Database &database) { return Reports().ReportsOf(database, "A") + '.'; }), ".");
}

TEST_F(StoreThreadTest, TriesOnceMoreOnANewConnection) {
  Succeed();
  int attempts = 0;
  EXPECT_EQ(Do(Access::Write,
               [&attempts](Database &) -> QByteArray {
                 if (++attempts == 1)
                   throw StoreFailure("the server has gone");
                 return "done";
               }),
            "done");
  EXPECT_EQ(lines_, QStringList());
}

TEST_F(StoreThreadTest, DoesNotRepeatWhatMayHaveBeenKept) {
  Succeed();
  int attempts = 0;
  EXPECT_EQ(Do(Access::Write,
               [&attempts](Database &) -> QByteArray {
                 ++attempts;
                 throw StoreFailure("the server has gone", true);
               }),
            "failed");
  EXPECT_EQ(attempts, 1);
}

TEST_F(StoreThreadTest, RepeatsWhatWentToAFileThatWasRemoved) {
  Succeed();
  int attempts = 0;
  EXPECT_EQ(Do(Access::Write,
               [&](Database &database) {
                 Reports().AddReport(database, "A", "x", 1);
                 if (++attempts == 1)
                   for (const char *end : {"", "-wal", "-shm"})
                     QFile::remove(address_.file + end);
                 return QByteArray("done");
               }),
            "done");
  EXPECT_EQ(attempts, 2);
  ReportStore again(address_);
  again.Open();
  EXPECT_EQ(again.ReportsOf("A"), "x\n");
}

TEST_F(StoreThreadTest, TakesAnyExceptionForAFailure) {
  Succeed();
  EXPECT_EQ(Do(Access::Write,
               [](Database &database) -> QByteArray {
                 Reports().AddReport(database, "A", "x", 1);
                 throw std::bad_alloc();
               }),
            "failed");
  EXPECT_EQ(Do(Access::Read, [](Database &) -> QByteArray { throw std::length_error("no reason"); }), "failed");
  EXPECT_EQ(lines_.size(), 1);
  EXPECT_EQ(Do(Access::Read, [](Database &database) { return Reports().ReportsOf(database, "A") + '.'; }), ".");
}

TEST_F(StoreThreadTest, LogsWhenTheStoreFailsAndWhenItWorksAgain) {
  const QString name = address_.file;
  Succeed();
  EXPECT_EQ(lines_, QStringList());
  Fail();
  Fail();
  EXPECT_EQ(lines_, QStringList(name + " does not work: no reason"));
  Succeed();
  Succeed();
  EXPECT_EQ(lines_.mid(1), QStringList(name + " works again"));
  EXPECT_EQ(levels_, QList<LogLevel>({LogLevel::Warning, LogLevel::Info}));
}

TEST_F(StoreThreadTest, DoesNotTakeAReadForAProofThatWritesWork) {
  Succeed();
  Fail(Access::Write);
  Succeed(Access::Read);
  Fail(Access::Write);
  EXPECT_EQ(lines_.size(), 1);
  Succeed(Access::Write);
  Fail(Access::Read);
  Succeed(Access::Read);
  EXPECT_EQ(lines_.size(), 4);
}

TEST_F(StoreThreadTest, GivesUpAJobThatTakesTooLong) {
  thread_ = std::make_unique<StoreThread>(address_, reports_schema, log_, 400);
  std::promise<void> gate;
  std::shared_future<void> open = gate.get_future().share();
  QByteArrayList outcomes;
  const auto note = [&](const std::optional<QByteArray> &result) { outcomes.append(result.value_or("failed")); };
  bool second_was_done = false;
  std::promise<void> begun;
  thread_->Submit(
      Access::Write, [&begun, open](Database &) { return begun.set_value(), open.wait(), QByteArray("late"); }, note);
  begun.get_future().wait();
  thread_->Submit(
      Access::Write,
      [&second_was_done](Database &) {
        second_was_done = true;
        return QByteArray("later");
      },
      note);
  WaitFor(outcomes, 2);
  EXPECT_EQ(outcomes, QByteArrayList({"failed", "failed"}));
  EXPECT_EQ(lines_.size(), 1);
  EXPECT_TRUE(lines_.value(0).endsWith("does not work: it does not answer")) << lines_.value(0).toStdString();

  // Nobody has to wait while it is stuck: a further job fails before Submit returns.
  thread_->Submit(
      Access::Write, [](Database &) { return QByteArray("done"); }, note);
  EXPECT_EQ(outcomes, QByteArrayList({"failed", "failed", "failed"}));

  gate.set_value();
  EXPECT_TRUE(SucceedsWithin(30'000));
  EXPECT_FALSE(second_was_done) << "what had not begun is not done after its failure";
  EXPECT_GE(lines_.size(), 2) << "a slow disk may take too long once more";
  EXPECT_EQ(outcomes.size(), 3);
}

TEST_F(StoreThreadTest, WorksAgainByAReadWhereNothingButReadsTookTooLong) {
  Succeed();
  thread_ = std::make_unique<StoreThread>(address_, reports_schema, log_, 100);
  std::promise<void> gate;
  std::shared_future<void> open = gate.get_future().share();
  QByteArrayList outcomes;
  const auto note = [&](const std::optional<QByteArray> &result) { outcomes.append(result.value_or("failed")); };
  std::promise<void> begun;
  thread_->Submit(
      Access::Read, [&begun, open](Database &) { return begun.set_value(), open.wait(), QByteArray("late"); }, note);
  begun.get_future().wait();
  WaitFor(outcomes, 1);
  EXPECT_EQ(outcomes, QByteArrayList({"failed"}));
  EXPECT_FALSE(thread_->Works());
  gate.set_value();
  QElapsedTimer clock;
  for (clock.start(); !thread_->Works() && clock.elapsed() < 60'000;)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
  EXPECT_TRUE(thread_->Works());
  const QString name = address_.file;
  EXPECT_EQ(lines_, QStringList({name + " does not work: it does not answer", name + " works again"}));
}

TEST_F(StoreThreadTest, EndsThoughTheStoreIsStuck) {
  auto gate = std::make_shared<std::promise<void>>();
  thread_->Submit(
      Access::Write, [open = gate->get_future().share()](Database &) { return open.wait(), QByteArray(); },
      [](const std::optional<QByteArray> &) { ADD_FAILURE() << "there is nobody to be answered"; });
  QThread::msleep(50);
  QElapsedTimer clock;
  clock.start();
  thread_.reset();
  EXPECT_LT(clock.elapsed(), 9'000);
  gate->set_value();
  QThread::msleep(100);
}

/// A folder where a store cannot be created until there is room.
class FolderWithoutRoom {
 public:
  explicit FolderWithoutRoom(const QString &path) : path_(path) {
    QFile file(path_);
    EXPECT_TRUE(file.open(QFile::WriteOnly));
  }
  StoreAddress Address() const { return {.file = path_ + "/service.sqlite"}; }
  void MakeRoom() const { EXPECT_TRUE(QFile::remove(path_) && QDir().mkpath(path_)); }

 private:
  const QString path_;
};

TEST_F(StoreThreadTest, PausesLongerAfterEachFailureToOpenTheStore) {
  const FolderWithoutRoom folder(folder_.filePath("folder"));
  thread_ = std::make_unique<StoreThread>(folder.Address(), reports_schema, log_, 5'000);
  // It is tried at 0, 100, 300, 700, 1,500 and 3,100 ms.
  EXPECT_FALSE(SucceedsWithin(2'000));
  folder.MakeRoom();
  EXPECT_FALSE(SucceedsWithin(200)) << "it has not even been tried";
  EXPECT_TRUE(SucceedsWithin(30'000));
  ASSERT_EQ(lines_.size(), 2);
  EXPECT_TRUE(lines_[0].contains("does not work: unable to open database file")) << lines_[0].toStdString();
}

}  // namespace
}  // namespace borvane::mirror
