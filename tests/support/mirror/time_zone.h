#pragma once

#include <QByteArray>
#include <ctime>

namespace borvane::mirror {

/// Sets the process's time zone for as long as it lives.
class TimeZone {
 public:
  explicit TimeZone(const char *name) : before_(qgetenv("TZ")), was_set_(qEnvironmentVariableIsSet("TZ")) {
    qputenv("TZ", name);
    ::tzset();
  }
  ~TimeZone() {
    if (was_set_)
      qputenv("TZ", before_);
    else
      qunsetenv("TZ");
    ::tzset();
  }
  TimeZone(const TimeZone &) = delete;
  TimeZone &operator=(const TimeZone &) = delete;

 private:
  QByteArray before_;
  bool was_set_;
};

}  // namespace borvane::mirror
