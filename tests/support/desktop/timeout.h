#pragma once

namespace borvane {

/// How long a test waits for what must come, in milliseconds: long enough for a machine that is busy with other builds.
inline constexpr int timeout = 60'000;

}  // namespace borvane
