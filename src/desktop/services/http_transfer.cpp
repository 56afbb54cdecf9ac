#include "desktop/services/http_transfer.h"

#include <utility>

namespace borvane {

TransferNumber DesktopHttpTransfer::Start(std::string_view address) {
  return fetcher_.Start(address, [this](HttpFetcher::Number fetch, FetchResult result) {
    results_[fetch] = {.failed = result.failed, .text = std::move(result.body)};
  });
}

bool DesktopHttpTransfer::IsDone(TransferNumber transfer) const { return !fetcher_.IsUnderWay(transfer); }

void DesktopHttpTransfer::Cancel(TransferNumber transfer) { fetcher_.Cancel(transfer); }

TransferResult DesktopHttpTransfer::Take(TransferNumber transfer) {
  TransferResult result = std::move(results_[transfer]);
  results_.erase(transfer);
  return result;
}

}  // namespace borvane
