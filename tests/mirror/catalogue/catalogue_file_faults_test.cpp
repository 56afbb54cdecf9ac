#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include "catalogue/catalogue_file.h"
#include "support/desktop/watched_disk.h"

// A disk that does not give the catalogue's file.

namespace borvane::mirror {
namespace {

QByteArray FeedOf(const QByteArray &id) {
  return R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{"mag":1.5,"place":"Yucaipa, CA",)"
         R"("time":1594870627920},"geometry":{"type":"Point","coordinates":[-117,34,5]},"id":")" +
         id + "\"}]}";
}

void Write(const QString &path, const QByteArray &text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write(text);
}

/// Replaces a catalogue's file while the disk breaks at its call with that number for the mirror. Gives whether it did.
bool TakesTheOtherFileInTheEnd(int number) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("events.geojson");
  Write(path, FeedOf("first"));
  QStringList taken;
  CatalogueFile catalogue(
      path,
      [&](const CatalogueReading &reading) {
        for (const Event &event : reading.events)
          taken += event.id;
      },
      [](const QString & /*fault*/) {});
  catalogue.Start();
  EXPECT_EQ(taken, QStringList({"first"}));

  Write(path, FeedOf("the-other"));
  WatchedDisk disk(folder.path());
  disk.Break(WatchedDisk::Fault::once, number);
  for (const QDeadlineTimer deadline(30'000); taken.size() < 2 && !deadline.hasExpired(); QThread::msleep(5))
    QCoreApplication::processEvents();
  EXPECT_EQ(taken, QStringList({"first", "the-other"})) << "with the fault at call " << number;
  return disk.HasStruck();
}

TEST(CatalogueFile, IsTakenUpWholeWhicheverCallFails) {
  int number = 1;
  while (TakesTheOtherFileInTheEnd(number) && !HasFailure())
    ++number;
  EXPECT_GT(number, 2) << "opened and read";
}

}  // namespace
}  // namespace borvane::mirror
