#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace borvane {

/// The numbers of the run-time errors, as the error report shows them.
enum class Failure : int {
  InvalidArgument = 5,
  Overflow = 6,
  Subscript = 9,
  TypeMismatch = 13,
  FileAccess = 75,
  ObjectNotSet = 91,
  InvalidPropertyValue = 380,
  RequestFailed = 35761,
  StillExecutingLastRequest = 35764,
};

/// A run-time error of the program. A procedure that has a trap catches it; everywhere else it reaches the
/// Dispatch of the event, is reported and ends the program.
class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, std::string_view description);
  explicit RuntimeError(Failure failure);

  int number() const { return number_; }
  const std::string &description() const { return description_; }
  const char *what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
};

/// Raises `failure` as a RuntimeError.
[[noreturn]] void Fail(Failure failure);

}  // namespace borvane
