#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/mirror/events_under_test.h"
#include "support/mirror/take_up_feeds.h"

// What was taken up is served at once and stored in the end, whatever the disk under the store does.

namespace borvane::mirror {
namespace {

constexpr int readings = 5;

/// What a process has printed that took up the readings on a disk that fails in the calls from number `from` to `to`.
struct TakingUp {
  QByteArrayList lines;  ///< one for each reading
  qsizetype faults = 0;  ///< that struck
};

TakingUp TakeUpOnABadDisk(const QString &file, int from, int to, int milliseconds) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // The preloaded names are separated by blanks, so that a folder with a blank cannot be among them.
  environment.insert("LD_LIBRARY_PATH", BORVANE_DISK_FAULTS_FOLDER);
  environment.insert("LD_PRELOAD", BORVANE_DISK_FAULTS);
  environment.insert("BORVANE_FAULT_FILE", "-events.sqlite");
  environment.insert("BORVANE_FAULT_FROM", QString::number(from));
  environment.insert("BORVANE_FAULT_TO", QString::number(to));
  // A sanitizer wants to be the first library; here it cannot.
  environment.insert("ASAN_OPTIONS", "verify_asan_link_order=0");
  process.setProcessEnvironment(environment);
  process.start(BORVANE_TAKE_UP, {file, QString::number(readings), QString::number(milliseconds)});
  EXPECT_TRUE(process.waitForFinished(120'000));
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process.exitCode(), 0);
  TakingUp result = {.lines = process.readAllStandardOutput().trimmed().split('\n'),
                     .faults = process.readAllStandardError().count("fault ")};
  EXPECT_EQ(result.lines.size(), readings);
  return result;
}

/// What a mirror that starts now has, by ids that are not gone, and the magnitude of the first event.
QString StoredIds(const StoreAddress &address, double *first_magnitude = nullptr) {
  EventsUnderTest events(address);
  events.Start();
  EXPECT_EQ(events.Lines(), QStringList());
  QStringList ids;
  for (const EventRecord &record : events.Records()) {
    if (!record.is_gone)
      ids.append(record.event.id);
    if (record.event.id == "ci1" && first_magnitude != nullptr)
      *first_magnitude = record.event.magnitude.value();
  }
  return ids.join(' ');
}

class EventsOnABadDisk : public testing::Test {
 protected:
  QTemporaryDir folder_;
};

TEST_F(EventsOnABadDisk, AreAllStoredInTheEndWhicheverCallFails) {
  int call = 1;
  for (qsizetype struck = 1; struck > 0; ++call) {
    const QString file = folder_.filePath(QString("%1/x.sqlite").arg(call));
    const TakingUp result = TakeUpOnABadDisk(file, call, call, 60'000);
    struck = result.faults;
    for (int number = 1; number <= readings; ++number)
      EXPECT_EQ(result.lines.value(number - 1), (IdsAfter(number) + "||stored").toLatin1()) << "call " << call;
    double magnitude = 0;
    EXPECT_EQ(StoredIds(EventStoreAddress({.file = file}), &magnitude), IdsAfter(readings)) << "call " << call;
    EXPECT_EQ(magnitude, readings);
  }
  EXPECT_GT(call, 20) << "making the store alone takes more calls";
}

TEST_F(EventsOnABadDisk, AreServedThoughTheDiskIsFullAndStoredAsFarAsItWent) {
  for (const int call : {1, 12, 25, 40}) {
    const QString file = folder_.filePath(QString("%1/x.sqlite").arg(call));
    const TakingUp result = TakeUpOnABadDisk(file, call, 1'000'000, 200);
    EXPECT_GT(result.faults, 0);
    int stored = 0;
    for (int number = 1; number <= readings; ++number) {
      const QByteArray line = result.lines.value(number - 1);
      EXPECT_TRUE(line.startsWith((IdsAfter(number) + "||").toLatin1())) << line.constData() << ", call " << call;
      if (line.endsWith("stored"))
        stored = number;
    }
    // A slow disk may have brought one more.
    QStringList possible;
    for (int number = stored; number <= readings; ++number)
      possible.append(IdsAfter(number));
    const QString ids = StoredIds(EventStoreAddress({.file = file}));
    EXPECT_TRUE(possible.contains(ids)) << ids.toStdString() << ", call " << call;
  }
}

}  // namespace
}  // namespace borvane::mirror
