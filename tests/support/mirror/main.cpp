#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/offline.h"

// Sockets, timers and processes of Qt need an application object for as long as the tests run.
int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);

  // A mirror that a test kills leaves its socket and its lock behind: here, and they go with this folder. A database
  // server that runs as a user of its own has to find its way through.
  const QTemporaryDir folder;
  QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFile::ExeGroup | QFile::ExeOther);
  qputenv("TMPDIR", QFile::encodeName(folder.path()));

  borvane::StayOffline(folder.path());

  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
