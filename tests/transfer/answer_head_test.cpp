#include "transfer/answer_head.h"

#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

bool IsWholeAfter(const std::vector<std::string_view> &lines) {
  AnswerHead head;
  for (const std::string_view line : lines)
    head.TakeLine(line);
  return head.IsWhole();
}

TEST(AnswerHead, IsWholeFromItsBlankLineOn) {
  EXPECT_FALSE(IsWholeAfter({}));
  EXPECT_FALSE(IsWholeAfter({"HTTP/1.1 200 OK\r\n"}));
  EXPECT_FALSE(IsWholeAfter({"HTTP/1.1 200 OK\r\n", "Server: x\r\n"}));
  EXPECT_TRUE(IsWholeAfter({"HTTP/1.1 200 OK\r\n", "Server: x\r\n", "\r\n"}));
  EXPECT_TRUE(IsWholeAfter({"HTTP/1.1 200 OK\n", "\n"}));
}

TEST(AnswerHead, IsThatOfTheLastAnswer) {
  EXPECT_FALSE(IsWholeAfter({"HTTP/1.1 301 Moved\r\n", "\r\n", "HTTP/1.1 200 OK\r\n", "Server: x\r\n"}));
  EXPECT_TRUE(IsWholeAfter({"HTTP/1.1 100 Continue\r\n", "\r\n", "HTTP/1.1 200 OK\r\n", "\r\n"}));
}

TEST(AnswerHead, StaysWholeWithATrailer) {
  EXPECT_TRUE(IsWholeAfter({"HTTP/1.1 200 OK\r\n", "\r\n", "Checksum: 1\r\n"}));
}

}  // namespace
}  // namespace borvane
