#include "desktop/settings/write_lock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <atomic>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include "support/desktop/timeout.h"
#include "support/desktop/waiting_for_lock.h"

namespace borvane {
namespace {

class WriteLockOnDisk : public testing::Test {
 protected:
  QString file() const { return folder_.filePath("lock"); }
  bool IsFree() const { return WriteLock(file(), 0).IsHeld(); }

 private:
  QTemporaryDir folder_;
};

TEST_F(WriteLockOnDisk, IsHeldByOneAtATime) {
  {
    const WriteLock lock(file(), 0);
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_FALSE(IsFree());
    EXPECT_FALSE(WriteLock(file(), 20).IsHeld());
  }
  EXPECT_TRUE(IsFree());
  EXPECT_TRUE(QFile::exists(file()));
}

TEST_F(WriteLockOnDisk, IsFreeWhateverALeftoverFileHolds) {
  QFile leftover(file());
  ASSERT_TRUE(leftover.open(QFile::WriteOnly));
  leftover.write("1\nborvane\nelsewhere\n");
  leftover.close();
  EXPECT_TRUE(IsFree());
}

TEST_F(WriteLockOnDisk, IsNotWaitedForWhereNoneCanBeHad) {
  ASSERT_TRUE(QDir().mkpath(file() + "/in the way"));
  const WriteLock lock(file(), 0);
  EXPECT_TRUE(lock.IsHeld());
  EXPECT_TRUE(IsFree());
}

TEST_F(WriteLockOnDisk, GoesToTheOneThatWaitsBeforeItsLastHolder) {
  std::optional<WriteLock> lock;
  lock.emplace(file(), 0);
  std::atomic_bool is_served = false;
  std::atomic_bool may_end = false;
  std::thread waiting([&] {
    const WriteLock mine(file(), timeout);
    is_served = mine.IsHeld();
    while (!may_end)
      std::this_thread::yield();
  });
  EXPECT_TRUE(AwaitWaiting(file()));

  lock.reset();
  EXPECT_FALSE(IsFree());

  may_end = true;
  waiting.join();
  EXPECT_TRUE(is_served);
  EXPECT_TRUE(IsFree());
}

}  // namespace
}  // namespace borvane
