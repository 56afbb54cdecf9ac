#include <QCoreApplication>

#include <gtest/gtest.h>

// Sockets, timers and processes of Qt need an application object for as long as the tests run.
int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
