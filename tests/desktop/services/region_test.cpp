#include "desktop/services/region.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

namespace borvane {
namespace {

QByteArray DecimalSeparatorOf(const QString &locale) {
  constexpr int generous = 60'000;  // milliseconds
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("LC_ALL", locale);
  QProcess process;
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationFilePath(), {"--decimal-separator"});
  EXPECT_TRUE(process.waitForFinished(generous));
  return process.readAllStandardOutput();
}

TEST(DesktopRegion, GivesTheDecimalSeparatorOfTheSession) {
  EXPECT_EQ(DecimalSeparatorOf("en_US.UTF-8"), ".");
  EXPECT_EQ(DecimalSeparatorOf("de_DE.UTF-8"), ",");
  EXPECT_EQ(DecimalSeparatorOf("C"), ".");
}

TEST(DesktopRegion, GivesAPointWhereTheProgramsTextLacksTheSeparator) {
  EXPECT_EQ(DecimalSeparatorOf("fa_IR.UTF-8"), ".");
}

}  // namespace
}  // namespace borvane
