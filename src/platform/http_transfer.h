#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace borvane {

/// Names one request of a run; 0 names none.
using TransferNumber = std::uint64_t;

/// How a transfer ended.
struct TransferResult {
  bool failed = false;  // unreachable, timed out, cancelled, or too large
  std::string text;     // the body, whatever the status
};

/// Fetches addresses in the background, while events run.
class HttpTransfer {
 public:
  /// Begins a GET of `address`, whose path and query are sent unchanged.
  virtual TransferNumber Start(std::string_view address) = 0;

  /// Whether the transfer has ended, one way or the other.
  virtual bool IsDone(TransferNumber transfer) const = 0;

  /// Asks the transfer to end; it then ends as failed. Does nothing for one that is done.
  virtual void Cancel(TransferNumber transfer) = 0;

  /// The result of a transfer that is done; it is forgotten.
  virtual TransferResult Take(TransferNumber transfer) = 0;

 protected:
  ~HttpTransfer() = default;
};

}  // namespace borvane
