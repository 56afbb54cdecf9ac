#include "desktop/services/socket_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

namespace borvane {
namespace {

constexpr QFile::Permissions of_the_user = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// Surrounds a test with a home of its own, and puts the environment back.
class SocketFolderTest : public testing::Test {
 protected:
  SocketFolderTest() {
    qputenv("XDG_CACHE_HOME", QFile::encodeName(home_.filePath("cache")));
    qunsetenv("XDG_RUNTIME_DIR");
  }
  ~SocketFolderTest() override {
    Restore("XDG_CACHE_HOME", cache_);
    Restore("XDG_RUNTIME_DIR", runtime_);
  }

  const QTemporaryDir &home() const { return home_; }
  QString InTheCache() const { return home_.filePath("cache/borvane"); }

 private:
  static void Restore(const char *name, const QByteArray &value) {
    if (value.isNull())
      qunsetenv(name);
    else
      qputenv(name, value);
  }

  const QByteArray cache_ = qgetenv("XDG_CACHE_HOME");
  const QByteArray runtime_ = qgetenv("XDG_RUNTIME_DIR");
  const QTemporaryDir home_;
};

TEST_F(SocketFolderTest, IsTheRuntimeFolderOfTheUser) {
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home().path()));
  EXPECT_EQ(SocketFolder(), home().path());
}

TEST_F(SocketFolderTest, IsCreatedForTheUserAloneWhereThereIsNoRuntimeFolder) {
  EXPECT_EQ(SocketFolder(), InTheCache());
  EXPECT_EQ(QFile::permissions(InTheCache()) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser), of_the_user);
  EXPECT_EQ(SocketFolder(), InTheCache());
}

TEST_F(SocketFolderTest, IsNoRuntimeFolderWhereOthersMayWrite) {
  const QTemporaryDir shared;
  for (const auto others : {QFile::WriteGroup, QFile::WriteOther}) {
    QFile::setPermissions(shared.path(), of_the_user | others);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(shared.path()));
    EXPECT_EQ(SocketFolder(), InTheCache()) << others;
  }
}

TEST_F(SocketFolderTest, IsNoRuntimeFolderOfAnotherUser) {
  // Only the superuser can give a folder away; for all others the system's folders belong to another user.
  const QTemporaryDir given_away;
  const bool is_given = ::geteuid() == 0 && ::chown(given_away.path().toLocal8Bit().constData(), 12345, 12345) == 0;
  qputenv("XDG_RUNTIME_DIR", is_given ? given_away.path().toLocal8Bit() : QByteArray("/usr"));
  EXPECT_EQ(SocketFolder(), InTheCache());
}

TEST_F(SocketFolderTest, IsNoRuntimeFolderThatIsMissingOrNoFolder) {
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home().filePath("missing")));
  EXPECT_EQ(SocketFolder(), InTheCache());
  QFile(home().filePath("file")).open(QFile::WriteOnly);
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home().filePath("file")));
  EXPECT_EQ(SocketFolder(), InTheCache());
}

TEST_F(SocketFolderTest, IsNoLinkToAFolder) {
  const QTemporaryDir elsewhere;
  ASSERT_TRUE(QFile::link(elsewhere.path(), home().filePath("link")));
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home().filePath("link")));
  EXPECT_EQ(SocketFolder(), InTheCache());
}

TEST_F(SocketFolderTest, IsMadePrivateAgainWhereOthersCouldWrite) {
  ASSERT_EQ(SocketFolder(), InTheCache());
  QFile::setPermissions(InTheCache(), of_the_user | QFile::WriteOther);
  EXPECT_EQ(SocketFolder(), InTheCache());
  EXPECT_FALSE(QFile::permissions(InTheCache()) & QFile::WriteOther);
}

TEST_F(SocketFolderTest, IsInACacheFolderThatIsALink) {
  const QTemporaryDir elsewhere;
  ASSERT_TRUE(QFile::link(elsewhere.path(), home().filePath("cache")));
  EXPECT_EQ(SocketFolder(), InTheCache());
}

TEST_F(SocketFolderTest, LeavesTheRightsOfWhatALinkInItsPlaceLeadsTo) {
  const QTemporaryDir elsewhere;
  QFile::setPermissions(elsewhere.path(), of_the_user | QFile::WriteGroup);
  const QFile::Permissions before = QFile::permissions(elsewhere.path());
  ASSERT_TRUE(QDir().mkpath(home().filePath("cache")));
  ASSERT_TRUE(QFile::link(elsewhere.path(), InTheCache()));
  EXPECT_EQ(SocketFolder(), "");
  EXPECT_EQ(QFile::permissions(elsewhere.path()), before);
}

TEST_F(SocketFolderTest, IsEmptyWhereNoneCanBeCreated) {
  QFile(home().filePath("cache")).open(QFile::WriteOnly);
  EXPECT_EQ(SocketFolder(), "");
}

}  // namespace
}  // namespace borvane
