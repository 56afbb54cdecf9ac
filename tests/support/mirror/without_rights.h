#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

namespace borvane::mirror {

/// As long as it lives, this thread and those it starts have the rights of a user who owns nothing.
class WithoutRights {
 public:
  WithoutRights() { ::setfsuid(65'534); }
  ~WithoutRights() { ::setfsuid(::geteuid()); }
  WithoutRights(const WithoutRights &) = delete;
  WithoutRights &operator=(const WithoutRights &) = delete;
};

}  // namespace borvane::mirror
