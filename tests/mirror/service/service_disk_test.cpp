#include <QTemporaryDir>
#include <QThread>
#include <memory>

#include <gtest/gtest.h>

#include "support/mirror/maker_client.h"
#include "support/mirror/mirror_process.h"
#include "support/mirror/service_under_test.h"

// What was answered "ok" is kept, whatever the disk under the store does.

namespace borvane::mirror {
namespace {

/// The real program with a store of its own.
class RealDisk : public testing::Test {
 protected:
  QTemporaryDir folder_;
  const QString file_ = folder_.filePath("service.sqlite");
};

/// The real program with a disk that fails in the calls from number `from` to number `to`. `variable` is one more of
/// the environment.
std::unique_ptr<MirrorProcess> MirrorOnABadDisk(const QString &file, int from, int to,
                                                const QString &variable = "BORVANE_FAULT=") {
  return std::make_unique<MirrorProcess>(
      QStringList{"--store", file},
      Surroundings{.variables = {"LD_LIBRARY_PATH=" BORVANE_DISK_FAULTS_FOLDER, "LD_PRELOAD=" BORVANE_DISK_FAULTS,
                                 "BORVANE_FAULT_FILE=service.sqlite", "BORVANE_FAULT_FROM=" + QString::number(from),
                                 "BORVANE_FAULT_TO=" + QString::number(to), variable,
                                 // A sanitizer wants to be the first library; here it cannot.
                                 "ASAN_OPTIONS=verify_asan_link_order=0"}});
}

QByteArray Report(quint16 port, int number) {
  return AskMaker(port, "puta&map=A&strout=" + QByteArray::number(number)).value().body;
}

QByteArrayList Reports(const QString &file) {
  ServiceUnderTest service(StoreAddress{.file = file});
  return service.Ask("geta&map=A").split('\n');
}

/// Sends reports to a mirror whose disk fails, and kills it. Returns how many faults struck.
qsizetype ReportOnABadDisk(const QString &file, int from, int to, QByteArrayList &answered_ok) {
  const std::unique_ptr<MirrorProcess> mirror = MirrorOnABadDisk(file, from, to);
  for (int number = 1; number <= 4; ++number) {
    const QByteArray answer = Report(mirror->Port(), number);
    if (answer == "ok") {
      answered_ok.append(QByteArray::number(number));
      continue;
    }
    EXPECT_TRUE(answer.contains("503")) << answer.constData();
    EXPECT_EQ(GetFromMaker(mirror->Port(), "/borvane/version.txt").value().body, "235");
    // The pause before the store is opened again.
    QThread::msleep(120);
  }
  mirror->LogsWithin("fault ", 300);
  return mirror->Errors().count("fault ");
}

TEST_F(RealDisk, HaveEveryReportThatWasAnsweredOkWhicheverCallToTheDiskFails) {
  int call = 1;
  for (qsizetype struck = 1; struck > 0; ++call) {
    const QString file = folder_.filePath(QString("%1/service.sqlite").arg(call));
    QByteArrayList answered_ok;
    struck = ReportOnABadDisk(file, call, call, answered_ok);
    EXPECT_GE(answered_ok.size(), 3) << "one fault spoils one report at most, call " << call;
    const QByteArrayList reports = Reports(file);
    for (const QByteArray &number : answered_ok)
      EXPECT_EQ(reports.count(number), 1) << "report " << number.constData() << ", call " << call;
  }
  EXPECT_GT(call, 15) << "making the store alone takes more calls";
}

TEST_F(RealDisk, HaveEveryReportThatWasAnsweredOkWhenTheDiskIsFull) {
  for (const int call : {1, 10, 20, 30}) {
    const QString file = folder_.filePath(QString("%1/service.sqlite").arg(call));
    QByteArrayList answered_ok;
    EXPECT_GT(ReportOnABadDisk(file, call, 1'000'000, answered_ok), 0);
    EXPECT_LT(answered_ok.size(), 4);
    const QByteArrayList reports = Reports(file);
    for (const QByteArray &number : answered_ok)
      EXPECT_EQ(reports.count(number), 1) << "report " << number.constData() << ", call " << call;
  }
}

TEST_F(RealDisk, HaveEveryReportThatWasAnsweredOkWhenFilesMayGrowNoFurther) {
  QByteArrayList answered_ok;
  {
    MirrorProcess mirror({"--store", file_}, Surroundings{.largest_file = 100'000});
    constexpr int reports_that_one_address_may_send = 30;
    for (int number = 1; number <= reports_that_one_address_may_send; ++number) {
      const QByteArray answer = Report(mirror.Port(), number);
      if (answer == "ok")
        answered_ok.append(QByteArray::number(number));
      else
        EXPECT_TRUE(answer.contains("503")) << answer.constData();
    }
    EXPECT_EQ(GetFromMaker(mirror.Port(), "/borvane/version.txt").value().body, "235") << "the mirror has not ended";
    EXPECT_GT(answered_ok.size(), 0);
    EXPECT_LT(answered_ok.size(), reports_that_one_address_may_send);
  }
  const QByteArrayList reports = Reports(file_);
  for (const QByteArray &number : answered_ok)
    EXPECT_EQ(reports.count(number), 1) << "report " << number.constData();
}

TEST_F(RealDisk, HaveNothingAnsweredOkThatIsNotOnTheDisk) {
  {
    MirrorProcess mirror({"--store", file_});
    EXPECT_EQ(Report(mirror.Port(), 1), "ok");
  }
  const std::unique_ptr<MirrorProcess> mirror = MirrorOnABadDisk(file_, 1, 1'000'000, "BORVANE_FAULT_ONLY_SYNC=1");
  for (int number = 2; number <= 5; ++number)
    EXPECT_TRUE(Report(mirror->Port(), number).contains("503"));
}

}  // namespace
}  // namespace borvane::mirror
