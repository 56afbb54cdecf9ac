#include "basic/failure.h"

#include <exception>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(RuntimeError, HasTheNumberAndTheTextOfEachFailure) {
  struct Row {
    Failure failure;
    int number;
    std::string description;
  };
  const std::vector<Row> rows{
      {Failure::InvalidArgument, 5, "Invalid procedure call or argument"},
      {Failure::Overflow, 6, "Overflow"},
      {Failure::Subscript, 9, "Subscript out of range"},
      {Failure::TypeMismatch, 13, "Type mismatch"},
      {Failure::ObjectNotSet, 91, "Object variable not set"},
      {Failure::InvalidPropertyValue, 380, "Invalid property value"},
      {Failure::RequestFailed, 35761, "Request failed"},
      {Failure::StillExecutingLastRequest, 35764, "Still executing last request"},
      {Failure{1}, 1, "Unknown error"},
  };
  for (const Row &row : rows) {
    const RuntimeError error(row.failure);
    EXPECT_EQ(error.number(), row.number);
    EXPECT_EQ(error.description(), row.description);
  }
}

TEST(RuntimeError, KeepsItsOwnNumberAndText) {
  const RuntimeError error(53, "File not found");
  EXPECT_EQ(error.number(), 53);
  EXPECT_EQ(error.description(), "File not found");
  EXPECT_STREQ(error.what(), "File not found");
}

TEST(Fail, RaisesARuntimeErrorThatIsAnException) {
  std::string text;
  try {
    Fail(Failure::Overflow);
  } catch (const std::exception &error) {
    text = error.what();
  }
  EXPECT_EQ(text, "Overflow");
}

}  // namespace
}  // namespace borvane
