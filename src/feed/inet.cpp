#include "feed/inet.h"

#include "basic/failure.h"
#include "core/program.h"

namespace borvane {

std::string Inet::OpenURL(std::string_view address, int /*form*/) {
  if (StillExecuting())
    Fail(Failure::StillExecutingLastRequest);

  // Each request has its own number: while events run, a later request may take the client over, and this one then ends
  // as failed whatever becomes of the other.
  HttpTransfer &http = platform().http;
  const TransferNumber transfer = http.Start(address);
  newest_ = transfer;
  StateChanged.Raise();
  while (!http.IsDone(transfer))
    platform().events.WaitForEvents();
  TransferResult result = http.Take(transfer);
  newest_ = 0;  // requests nest: one that took the client over has ended before
  StateChanged.Raise();
  if (result.failed)
    Fail(Failure::RequestFailed);
  return std::move(result.text);
}

bool Inet::StillExecuting() const { return newest_ != 0 && !platform().http.IsDone(newest_); }

void Inet::Cancel() {
  if (StillExecuting())
    platform().http.Cancel(newest_);
}

}  // namespace borvane
