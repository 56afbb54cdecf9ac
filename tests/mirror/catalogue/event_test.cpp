#include "catalogue/event.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(IsEventId, TakesLettersDigitsAndThreeSigns) {
  const QString good = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
  for (char16_t character = 0; character < 0x180; ++character)
    EXPECT_EQ(IsEventId(QString(QChar(character))), good.contains(QChar(character))) << int{character};
}

}  // namespace
}  // namespace borvane::mirror
