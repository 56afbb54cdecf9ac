#pragma once

#include <map>

#include "platform/http_transfer.h"
#include "transfer/http_fetcher.h"

namespace borvane {

/// The program's transfers on the fetcher that both programs share.
class DesktopHttpTransfer final : public HttpTransfer {
 public:
  TransferNumber Start(std::string_view address) override;
  bool IsDone(TransferNumber transfer) const override;
  void Cancel(TransferNumber transfer) override;
  TransferResult Take(TransferNumber transfer) override;

 private:
  std::map<TransferNumber, TransferResult> results_;
  HttpFetcher fetcher_;
};

}  // namespace borvane
