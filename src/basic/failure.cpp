#include "basic/failure.h"

namespace borvane {

namespace {

std::string_view DescriptionOf(Failure failure) {
  switch (failure) {
    case Failure::InvalidArgument:
      return "Invalid procedure call or argument";
    case Failure::Overflow:
      return "Overflow";
    case Failure::Subscript:
      return "Subscript out of range";
    case Failure::TypeMismatch:
      return "Type mismatch";
    case Failure::FileAccess:
      return "Path/File access error";
    case Failure::ObjectNotSet:
      return "Object variable not set";
    case Failure::InvalidPropertyValue:
      return "Invalid property value";
    case Failure::RequestFailed:
      return "Request failed";
    case Failure::StillExecutingLastRequest:
      return "Still executing last request";
  }
  return "Unknown error";
}

}  // namespace

RuntimeError::RuntimeError(int number, std::string_view description) : number_(number), description_(description) {}

RuntimeError::RuntimeError(Failure failure) : RuntimeError(static_cast<int>(failure), DescriptionOf(failure)) {}

void Fail(Failure failure) { throw RuntimeError(failure); }

}  // namespace borvane
