#pragma once

#include <functional>

namespace borvane {

/// Runs `handler`. Every event of the outside world enters the program through here. An error that no trap has caught
/// is reported by the platform and ends the program at once; it never travels on into a procedure that lets events run.
void Dispatch(const std::function<void()> &handler);

}  // namespace borvane
