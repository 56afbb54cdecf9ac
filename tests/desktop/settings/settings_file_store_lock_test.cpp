#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QtTest/QTest>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "desktop/settings/settings_file_store.h"
#include "desktop/settings/write_lock.h"
#include "support/desktop/settings_on_disk.h"
#include "support/desktop/waiting_for_lock.h"

namespace borvane {
namespace {

constexpr int generous = 60'000;  // milliseconds

/// Another program holds the lock while a value is written.
class SettingsWhileLocked : public SettingsOnDisk {
 protected:
  SettingsWhileLocked() {
    WriteFile("[General]\nArea=Utah\n");
    lock_.emplace(lock_file(), 0);
  }

  void Unlock() { lock_.reset(); }

  /// Starts another Borvane that writes so many values and waits so long for the lock.
  std::unique_ptr<QProcess> StartWriter(int number, int values,
                                        int milliseconds = SettingsFileStore::write_timeout) const {
    auto writer = std::make_unique<QProcess>();
    writer->start(QCoreApplication::applicationFilePath(), {"--write-settings", file(), QString::number(number),
                                                            QString::number(values), QString::number(milliseconds)});
    return writer;
  }

  /// What a writer reports of its settings, when it has ended.
  static QByteArray ReportOf(QProcess &writer) {
    EXPECT_TRUE(writer.waitForFinished(10 * generous));
    EXPECT_EQ(writer.exitCode(), 0);
    const QByteArray errors = writer.readAllStandardError();
    const qsizetype report = errors.indexOf("borvane:");
    return report < 0 ? QByteArray() : errors.sliced(report);
  }

  /// Lets eight Borvanes that wait so long for the lock write forty values each, and expects each value in the file or
  /// named as lost. Returns how many are named.
  int NamedOfEightWriters(int milliseconds);

 private:
  std::optional<WriteLock> lock_;
};

int SettingsWhileLocked::NamedOfEightWriters(int milliseconds) {
  constexpr int writers = 8;
  constexpr int values = 40;
  QByteArray content = "[General]\n";
  for (int writer = 0; writer < writers; ++writer) {
    for (int value = 0; value < values; ++value)
      content += "W" + QByteArray::number(writer) + "-" + QByteArray::number(value) + "=none\n";
  }
  WriteFile(content);
  Unlock();

  std::vector<std::unique_ptr<QProcess>> processes;
  for (int writer = 0; writer < writers; ++writer)
    processes.push_back(StartWriter(writer, values, milliseconds));
  int named = 0;
  QByteArray expected = QByteArray(content).replace("=none", "=done");
  for (const auto &process : processes) {
    const QByteArray report = ReportOf(*process).trimmed();
    if (report.isEmpty())
      continue;
    for (const QByteArray &name : report.sliced(report.lastIndexOf(": ") + 2).split(',')) {
      EXPECT_TRUE(expected.contains('\n' + name.trimmed() + "=done\n")) << report.constData();
      expected.replace('\n' + name.trimmed() + "=done\n", '\n' + name.trimmed() + "=none\n");
      ++named;
    }
  }
  EXPECT_EQ(ReadFile(), expected);
  return named;
}

TEST_F(SettingsWhileLocked, AreKeptAndWrittenInOrderWhenTheLockIsFree) {
  SettingsFileStore store(file(), 0);
  Write(store, "Area", "Seattle Area");
  Write(store, "Refresh", "60");
  Write(store, "Area", "Los Angeles");

  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n") << "no write goes past another's lock";
  EXPECT_EQ(Text(store, "Area"), "Los Angeles");
  EXPECT_EQ(Text(store, "Refresh"), "60");
  SettingsFileStore other(file());
  EXPECT_EQ(Text(other, "Area"), "Utah");

  Unlock();
  EXPECT_TRUE(QTest::qWaitFor([&] { return ReadFile() != "[General]\nArea=Utah\n"; }, generous));
  EXPECT_EQ(ReadFile(), "[General]\nArea=Los Angeles\nRefresh=60\n");
}

TEST_F(SettingsWhileLocked, AreWrittenWithTheNextValue) {
  SettingsFileStore store(file(), 0);
  Write(store, "Area", "Seattle Area");
  Unlock();
  Write(store, "Refresh", "60");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\nRefresh=60\n");

  WriteFile("[General]\nArea=Utah\n");
  store.Finish();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n") << "what has been written is kept no longer";
}

TEST_F(SettingsWhileLocked, AreWaitedForOnce) {
  constexpr int timeout = 500;
  SettingsFileStore store(file(), timeout);
  QElapsedTimer time;
  time.start();
  Write(store, "Area", "Seattle Area");
  EXPECT_GE(time.restart(), timeout);
  for (int value = 0; value < 10; ++value)
    Write(store, "Refresh", std::to_string(value));
  EXPECT_LT(time.elapsed(), 10 * timeout) << "one that hangs is not waited for again";
  Unlock();
  store.Finish();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\nRefresh=9\n");
}

TEST_F(SettingsWhileLocked, AreWrittenBeforeTheEndOfTheProcessIfTheLockComesFree) {
  SettingsFileStore store(file(), 0);
  Write(store, "Area", "Seattle Area");
  std::thread holder([&] {
    EXPECT_TRUE(AwaitWaiting(lock_file()));
    Unlock();
  });
  testing::internal::CaptureStderr();
  store.Finish();
  holder.join();

  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\n");
}

TEST_F(SettingsWhileLocked, AreNamedWhenTheyAreLostAtTheEndOfTheProcess) {
  const auto writer = StartWriter(1, 2);
  EXPECT_EQ(ReportOf(*writer),
            "borvane: settings lost, since another program holds " + lock_file().toLocal8Bit() + ": W1-0, W1-1\n");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsWhileLocked, AreStillOpenToQSettingsOnTheSameFile) {
  Unlock();
  SettingsFileStore store(file());
  Write(store, "Area", "Seattle Area");
  QElapsedTimer time;
  time.start();
  {
    QSettings other(file(), QSettings::IniFormat);
    other.setValue("Refresh", "60");
  }
  constexpr int until_a_lock_is_stale = 30'000;
  EXPECT_LT(time.elapsed(), until_a_lock_is_stale / 2);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\nRefresh=60\n");
  EXPECT_TRUE(QFileInfo::exists(lock_file()));
}

TEST_F(SettingsWhileLocked, AreAllWrittenByEightBorvanesThatWaitForEachOther) {
  EXPECT_EQ(NamedOfEightWriters(generous), 0);
}

TEST_F(SettingsWhileLocked, AreAllWrittenOrNamedByEightBorvanesAtOnce) {
  // On a disk that takes long for each write, the last values of one may not get their turn before the process ends.
  NamedOfEightWriters(SettingsFileStore::write_timeout);
}

TEST_F(SettingsWhileLocked, AreWaitedForForOneSecondAndTwoAtTheEnd) {
  EXPECT_EQ(SettingsFileStore::write_timeout, 1'000);
  EXPECT_EQ(SettingsFileStore::last_timeout, 2'000);
}

}  // namespace
}  // namespace borvane
