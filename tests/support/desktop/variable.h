#pragma once

#include <QByteArray>
#include <optional>

namespace borvane {

/// Gives a variable of the environment another value, or none, for as long as it lives.
class Variable {
 public:
  Variable(const char *name, const std::optional<QByteArray> &value)
      : name_(name), was_set_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
    Set(value);
  }
  Variable(const Variable &) = delete;
  Variable &operator=(const Variable &) = delete;
  ~Variable() { Set(was_set_ ? std::optional(before_) : std::nullopt); }

 private:
  void Set(const std::optional<QByteArray> &value) const {
    value.has_value() ? qputenv(name_, *value) : qunsetenv(name_);
  }

  const char *name_;
  bool was_set_;
  QByteArray before_;
};

}  // namespace borvane
