#include "common/attendance.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(AttendanceSocket, IsInTheFolderUnderTheNumberOfThePort) {
  EXPECT_EQ(AttendanceSocket("/run/user/1000", 17650), "/run/user/1000/borvane-mirror-17650");
  EXPECT_EQ(AttendanceSocket("/home/\xE9 x", 1), "/home/\xE9 x/borvane-mirror-1");
}

}  // namespace
}  // namespace borvane
